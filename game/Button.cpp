#include "game/Button.h"

#include "core/Event.h"
#include "core/LogManager.h"
#include "display/DisplayManager.h"
#include "game/LevelManager.h"
#include "game/Timer.h"
#include "game/inputReading.h"
#include "game/placeRandomly.h"
#include "game/resources.h"

Button::Button() {
    setSprite(label::BUTTON_SPRITE);
    setSolidness(sv::SPECTRAL);
    setAltitude(3);
    registerInterest(sv::MOUSE_EVENT);
    setType("Button");
    placeRandomly(this);
    current_timer = new Timer;
}

int Button::eventHandler(const sv::Event *p_event) {
    if (const sv::EventMouse *p_click = asLeftClick(p_event))
        LevelManager::getInstance().checkAnswer(this, p_click);
    return 0;
}

void warnIfButtonIsOutside() {
    const int rows = sv::DisplayManager::getInstance().getVertical();
    const int needed = static_cast<int>(BUTTON_POSITION.y) + 1;
    if (rows < needed)
        sv::LogManager::getInstance().writeLog(
            "warnIfButtonIsOutside(): Warning! The button is below the window's %d rows; its "
            "columns answer all the same. Set window_vertical_chars to %d or more.",
            rows, needed);
}
