/// Input as a test wants it: keys and a mouse that exist only here. It looks to the engine like a
/// window with the focus.
#pragma once

#include "selvane/core/Keyboard.h"
#include "selvane/input/InputSource.h"

#include <deque>
#include <functional>
#include <set>
#include <utility>

namespace sv {

class ScriptedInput final : public InputSource {
  public:
    /// `new_on_step` is called when the game loop comes for a step's input.
    explicit ScriptedInput(std::function<void()> new_on_step) : on_step(std::move(new_on_step)) {}

    // What happens in the step to come, in this order.

    /// A key that is down is not pressed again, and one that is up not released.
    void pressKey(Keyboard::Key key);
    void releaseKey(Keyboard::Key key);
    void moveMouse(Vector cell);
    void pressButton(EventMouseButton button);
    void releaseButton(EventMouseButton button);
    void typeCharacter(char32_t character);
    void closeWindow() { is_closed = true; }

    void beginStep() override { on_step(); }
    State getState() override { return is_closed ? State::CLOSED : State::OPEN; }
    std::optional<InputItem> next() override;
    bool hasFocus() override { return true; }
    bool isKeyDown(int sfml_key) override { return keys_down.contains(sfml_key); }
    bool isButtonDown(EventMouseButton button) override { return buttons_down.contains(button); }
    Vector mousePosition() override { return mouse; }

  private:
    std::function<void()> on_step;
    std::deque<InputItem> items;
    std::set<int> keys_down;
    std::set<EventMouseButton> buttons_down;
    Vector mouse;
    bool is_closed = false;
};

} // namespace sv
