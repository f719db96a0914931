#include "core/Event.h"

namespace sv {

Event::Event(const std::string &type) : event_type(type) {}

void Event::setType(const std::string &new_type) {
    event_type = new_type;
}

std::string Event::getType() const {
    return event_type;
}

} // namespace sv
