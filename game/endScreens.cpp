#include "game/endScreens.h"

#include "game/inputReading.h"
#include "game/setUpText.h"
#include "selvane/loop/GameManager.h"

namespace {

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
    setUpText(*this, sv::CENTER_CENTER, "YOU WIN!!!");
    setBorder(false);
}

int WinScreen::eventHandler(const sv::Event *p_event) {
    return quitOnQ(*this, p_event);
}

QToQuit::QToQuit() {
    setUpText(*this, sv::BOTTOM_CENTER, "PRESS Q TO QUIT");
}

int QToQuit::eventHandler(const sv::Event *p_event) {
    return quitOnQ(*this, p_event);
}
