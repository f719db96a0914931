/// What the mouse did, with which button and where. Sent by the input manager to registered
/// objects.
#pragma once

#include "selvane/core/Event.h"
#include "selvane/core/Vector.h"

namespace sv {

enum EventMouseAction : int {
    UNDEFINED_MOUSE_ACTION = -1,
    CLICKED = 0,
    PRESSED = 1, ///< Held; sent in every step while the button is down.
    MOVED = 2,
};

enum EventMouseButton : int {
    UNDEFINED_MOUSE_BUTTON = -1,
    LEFT = 0,
    RIGHT = 1,
    MIDDLE = 2,
};

class EventMouse : public Event {
  public:
    static constexpr const char *TYPE = MOUSE_EVENT;

    EventMouse() : Event(MOUSE_EVENT) {}

    void setMouseAction(EventMouseAction new_action) { mouse_action = new_action; }
    EventMouseAction getMouseAction() const { return mouse_action; }

    /// UNDEFINED_MOUSE_BUTTON for MOVED and for other buttons.
    void setMouseButton(EventMouseButton new_button) { mouse_button = new_button; }
    EventMouseButton getMouseButton() const { return mouse_button; }

    /// In cells of the window, with fractions; add the view's corner for the world position. May be
    /// outside the window while a button is held.
    void setMousePosition(Vector new_position) { mouse_xy = new_position; }
    Vector getMousePosition() const { return mouse_xy; }

  private:
    EventMouseAction mouse_action = UNDEFINED_MOUSE_ACTION;
    EventMouseButton mouse_button = UNDEFINED_MOUSE_BUTTON;
    Vector mouse_xy;
};

} // namespace sv
