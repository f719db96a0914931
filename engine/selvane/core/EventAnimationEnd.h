/// Sent to an object that registered for it, at the update after its animation has shown its last
/// frame for the last time; the next frame is the first again. Other objects do not get it.
#pragma once

#include "selvane/core/Event.h"

namespace sv {

class EventAnimationEnd : public Event {
  public:
    static constexpr const char *TYPE = ANIMATION_END_EVENT;

    EventAnimationEnd() : Event(ANIMATION_END_EVENT) {}
};

} // namespace sv
