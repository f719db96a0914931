/// The submit button: a left click on it asks for the verdict. Making it starts the timer that the
/// verdict stops.
///
/// The world owns it.
#pragma once

#include "selvane/core/Vector.h"
#include "selvane/world/Object.h"

class Button : public sv::Object {
  public:
    Button();

    /// Returns 0: a click is everyone's.
    int eventHandler(const sv::Event *p_event) override;
};

/// Where it stands while the player shoots, in cells.
inline constexpr sv::Vector BUTTON_POSITION{21, 35};
/// The window that shows all of it, and in which each of its columns can be clicked, has at least
/// so many cells.
inline constexpr int BUTTON_NEEDS_COLUMNS = 23;
inline constexpr int BUTTON_NEEDS_ROWS = 40;

/// Says in the log if the window is too small for the button.
void warnIfButtonIsOutside();
