#include "game/endScreens.h"

#include "core/Event.h"
#include "game/inputReading.h"
#include "loop/GameManager.h"

namespace {

void setUp(sv::ViewObject &screen, sv::ViewObjectLocation location, const char *text) {
    screen.setLocation(location);
    screen.setViewString(text);
    screen.setDrawValue(false);
    screen.setColor(sv::WHITE);
    screen.registerInterest(sv::KEYBOARD_EVENT);
    screen.setActive(true);
}

/// Either screen ends the game by itself.
int quitOnQ(sv::ViewObject &screen, const sv::Event *p_event) {
    const auto key = keyOf(p_event);
    if (!key)
        return 0;
    if (*key == sv::Keyboard::Q) {
        sv::GameManager::getInstance().setGameOver();
        screen.setActive(false);
    }
    return 1;
}

} // namespace

WinScreen::WinScreen() {
    setUp(*this, sv::CENTER_CENTER, "YOU WIN!!!");
    setBorder(false);
}

int WinScreen::eventHandler(const sv::Event *p_event) {
    return quitOnQ(*this, p_event);
}

QToQuit::QToQuit() {
    setUp(*this, sv::BOTTOM_CENTER, "PRESS Q TO QUIT");
}

int QToQuit::eventHandler(const sv::Event *p_event) {
    return quitOnQ(*this, p_event);
}
