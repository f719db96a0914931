#include "game/setUpText.h"

#include "selvane/core/Event.h"

void setUpText(sv::ViewObject &screen, sv::ViewObjectLocation location, const std::string &text) {
    screen.setLocation(location);
    screen.setViewString(text);
    screen.setDrawValue(false);
    screen.setColor(sv::WHITE);
    screen.registerInterest(sv::KEYBOARD_EVENT);
    screen.setActive(true);
}
