/// The input source in use as the input manager reads it: through the door for all that comes from
/// outside, where a record of a game takes its place.
#pragma once

#include "selvane/input/InputSource.h"

namespace sv {

class OutsideInput final : public InputSource {
  public:
    /// Borrows the source.
    explicit OutsideInput(InputSource &new_source) : source(&new_source) {}

    InputSource &getSource() const { return *source; }

    void beginStep() override;
    State getState() override;
    std::optional<InputItem> next() override;
    bool hasFocus() override;
    bool isKeyDown(int sfml_key) override;
    bool isButtonDown(EventMouseButton button) override;
    Vector mousePosition() override;

    /// Whether a signal asks the process to stop: the source then looks like a window that is being
    /// closed, so that a record of the game ends in the same way.
    static bool isStopAsked();

  private:
    InputSource *source;
};

} // namespace sv
