#include "game/Button.h"

#include "game/LevelManager.h"
#include "game/Timer.h"
#include "game/leftClick.h"
#include "game/random.h"
#include "game/resources.h"
#include "selvane/core/Event.h"
#include "selvane/core/LogManager.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/world/spawn.h"

Button::Button() {
    setSprite(labels::BUTTON_SPRITE);
    setSolidness(sv::SPECTRAL);
    setAltitude(3);
    registerInterest(sv::MOUSE_EVENT);
    setType("Button");
    placeRandomly(this);
    current_timer = sv::spawn<Timer>();
}

int Button::eventHandler(const sv::Event *p_event) {
    if (const auto *click = asLeftClick(p_event))
        LevelManager::getInstance().checkAnswer(this, click);
    return 0;
}

void warnIfButtonIsOutside() {
    const sv::DisplayManager &display = sv::DisplayManager::getInstance();
    const int columns = display.getHorizontal();
    const int rows = display.getVertical();
    if (columns >= BUTTON_NEEDS_COLUMNS && rows >= BUTTON_NEEDS_ROWS)
        return;
    sv::logLine(
        "warnIfButtonIsOutside(): Warning! A window of %d x %d cells does not show all of the "
        "button, whose columns answer at every height. Set window_horizontal_chars to %d or more "
        "and window_vertical_chars to %d or more.",
        columns, rows, BUTTON_NEEDS_COLUMNS, BUTTON_NEEDS_ROWS);
}
