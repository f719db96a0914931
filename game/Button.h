/// The submit button: a left click on it asks for the verdict. Its constructor starts the timer
/// that the verdict stops. The world owns it.
#pragma once

#include "selvane/core/Vector.h"
#include "selvane/world/Object.h"

class Button : public sv::Object {
  public:
    Button();

    /// Always returns 0.
    int eventHandler(const sv::Event *p_event) override;
};

/// Its position while the player shoots, in cells.
inline constexpr sv::Vector BUTTON_POSITION{21, 35};
/// The smallest window, in cells, that shows all of it and lets each of its columns be clicked.
inline constexpr int BUTTON_NEEDS_COLUMNS = 23;
inline constexpr int BUTTON_NEEDS_ROWS = 40;

/// Logs a warning if the window is smaller than the button needs.
void warnIfButtonIsOutside();
