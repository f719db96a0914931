/// The input of the display manager's window, whichever that is at the time. Keys and buttons that
/// are held are read from keyboard and mouse themselves, whichever window has the focus.
#pragma once

#include "selvane/input/InputSource.h"

namespace sv {

class WindowInput final : public InputSource {
  public:
    State getState() override;
    std::optional<InputItem> next() override;
    bool hasFocus() override;
    bool isKeyDown(int sfml_key) override;
    bool isButtonDown(EventMouseButton button) override;
    Vector mousePosition() override;
};

} // namespace sv
