/// Sent by the game manager to registered objects once a step, before input is read and the world
/// is updated.
#pragma once

#include "selvane/core/Event.h"

namespace sv {

class EventStep : public Event {
  public:
    static constexpr const char *TYPE = STEP_EVENT;

    /// `new_step_count`: steps completed since the game loop began; 0 in the first.
    explicit EventStep(int new_step_count) : Event(STEP_EVENT), step_count(new_step_count) {}

    int getStepCount() const { return step_count; }
    void setStepCount(int new_step_count) { step_count = new_step_count; }

  private:
    int step_count;
};

} // namespace sv
