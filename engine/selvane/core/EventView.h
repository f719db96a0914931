/// Changes the value of the view objects that carry its tag. Nothing in the engine sends one: a
/// game makes it and hands it to the world manager's onEvent().
#pragma once

#include "selvane/core/Event.h"

#include <string>

namespace sv {

class EventView : public Event {
  public:
    static constexpr const char *TYPE = VIEW_EVENT;

    /// With an empty tag, value 0, not a change.
    EventView() : Event(VIEW_EVENT) {}

    /// `new_tag`: the label of the view objects meant. `new_delta`: whether the value is added to
    /// theirs instead of taking its place.
    EventView(const std::string &new_tag, int new_value, bool new_delta)
        : Event(VIEW_EVENT), tag(new_tag), value(new_value), delta(new_delta) {}

    std::string getTag() const { return tag; }
    void setTag(const std::string &new_tag) { tag = new_tag; }
    int getValue() const { return value; }
    void setValue(int new_value) { value = new_value; }
    bool getDelta() const { return delta; }
    void setDelta(bool new_delta) { delta = new_delta; }

  private:
    std::string tag;
    int value = 0;
    bool delta = false;
};

} // namespace sv
