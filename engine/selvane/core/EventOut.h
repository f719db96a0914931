/// Sent to an object whose last move took all of it out of the world.
#pragma once

#include "selvane/core/Event.h"

namespace sv {

class EventOut : public Event {
  public:
    static constexpr const char *TYPE = OUT_EVENT;

    EventOut() : Event(OUT_EVENT) {}
};

} // namespace sv
