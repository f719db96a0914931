#include "game/WinScreen.h"

#include "game/MemoryScreens.h"
#include "selvane/core/EventKeyboard.h"
#include "selvane/loop/GameManager.h"

namespace {

// Both objects get the key, and each of them ends the game.
int quitOnQ(sv::ViewObject &screen, const sv::Event *p_event) {
    const auto *key_event = sv::eventCast<sv::EventKeyboard>(p_event);
    if (!key_event)
        return 0;
    if (key_event->getKey() == sv::Keyboard::Q) {
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
