/// The input of a game without the keys that the desk takes for itself, whichever source it comes
/// from.
#pragma once

#include "selvane/input/InputSource.h"

#include <deque>
#include <functional>
#include <set>

namespace sv {

enum class DeskKey { PAUSE, STEP, SLOWER, FASTER, OVERLAY, PICTURE };

class DeskInput final : public InputSource {
  public:
    /// Borrows the source. `new_on_key` is called when a key of the desk is pressed, `new_on_step`
    /// when the game loop comes for a step's input.
    DeskInput(InputSource &new_source, std::function<void(DeskKey)> new_on_key,
              std::function<void()> new_on_step);

    InputSource &getSource() const { return source; }

    /// While the game stands still: takes what happens, and keeps for the game that the window was
    /// closed and that keys were released. False once it was closed.
    bool takeMeanwhile();

    void beginStep() override;
    State getState() override { return source.getState(); }
    std::optional<InputItem> next() override;
    bool hasFocus() override { return source.hasFocus(); }
    bool isKeyDown(int sfml_key) override;
    bool isButtonDown(EventMouseButton button) override { return source.isButtonDown(button); }
    Vector mousePosition() override { return source.mousePosition(); }

  private:
    bool take(const InputItem &item);

    InputSource &source;
    std::function<void(DeskKey)> on_key;
    std::function<void()> on_step;
    std::deque<InputItem> waiting; // For the game.
    std::set<int> unheard;         // Keys that were pressed while it stood still.
};

} // namespace sv
