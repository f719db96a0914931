/// The submit button: a left click on it asks for the verdict. Making it starts the timer that the
/// verdict stops.
///
/// The world owns it.
#pragma once

#include "core/Vector.h"
#include "world/Object.h"

class Button : public sv::Object {
  public:
    Button();

    /// Returns 0: a click is everyone's.
    int eventHandler(const sv::Event *p_event) override;
};

/// Where it stands while the player shoots, in cells.
inline constexpr sv::Vector BUTTON_POSITION{21, 35};

/// Says in the log if the window has too few rows to show the button.
void warnIfButtonIsOutside();
