#include "selvane/core/Event.h"

#include <algorithm>
#include <iterator>

namespace sv {

namespace {

constexpr const char *engine_events[] = {UNDEFINED_EVENT,      STEP_EVENT,
                                         KEYBOARD_EVENT,       MOUSE_EVENT,
                                         COLLISION_EVENT,      OUT_EVENT,
                                         PATH_EVENT,           NETWORK_EVENT,
                                         CUSTOM_NETWORK_EVENT, KEYBOARD_NETWORK_EVENT,
                                         MOUSE_NETWORK_EVENT,  VIEW_EVENT,
                                         ANIMATION_END_EVENT,  TEXT_EVENT};

} // namespace

bool isEngineEvent(const std::string &type) {
    return std::find(std::begin(engine_events), std::end(engine_events), type) !=
           std::end(engine_events);
}

Event::Event(const std::string &type) : event_type(type) {}

void Event::setType(const std::string &new_type) {
    event_type = new_type;
}

std::string Event::getType() const {
    return event_type;
}

} // namespace sv
