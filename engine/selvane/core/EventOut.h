/// Tells an object that its last move took it out of the world altogether.
#pragma once

#include "selvane/core/Event.h"

namespace sv {

class EventOut : public Event {
  public:
    static constexpr const char *TYPE = OUT_EVENT;

    EventOut() : Event(OUT_EVENT) {}
};

} // namespace sv
