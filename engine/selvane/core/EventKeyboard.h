/// One key, and what happened to it. Sent by the input manager to registered objects.
#pragma once

#include "selvane/core/Event.h"
#include "selvane/core/Keyboard.h"

namespace sv {

enum EventKeyboardAction : int {
    UNDEFINED_KEYBOARD_ACTION = -1,
    KEY_PRESSED = 0,
    KEY_RELEASED = 1,
    KEY_DOWN = 2, ///< Held; sent in every step while the key is down.
};

class EventKeyboard : public Event {
  public:
    static constexpr const char *TYPE = KEYBOARD_EVENT;

    EventKeyboard() : Event(KEYBOARD_EVENT) {}

    virtual void setKey(Keyboard::Key new_key) { key_val = new_key; }
    virtual Keyboard::Key getKey() const { return key_val; }
    virtual void setKeyboardAction(EventKeyboardAction new_action) { keyboard_action = new_action; }
    virtual EventKeyboardAction getKeyboardAction() const { return keyboard_action; }

  private:
    Keyboard::Key key_val = Keyboard::UNDEFINED_KEY;
    EventKeyboardAction keyboard_action = UNDEFINED_KEYBOARD_ACTION;
};

} // namespace sv
