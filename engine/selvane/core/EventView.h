/// Changes the value of the view objects with its tag. The engine sends none: a game passes it to
/// the world manager's onEvent().
#pragma once

#include "selvane/core/Event.h"

#include <string>

namespace sv {

class EventView : public Event {
  public:
    static constexpr const char *TYPE = VIEW_EVENT;

    /// An empty tag, value 0, no delta.
    EventView() : Event(VIEW_EVENT) {}

    /// `new_tag`: the label of the view objects. `new_delta`: whether the value is added to theirs
    /// or replaces it.
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
