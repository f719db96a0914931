/// What the windowing library makes of the engine's colours.
#pragma once

#include "selvane/core/Color.h"

namespace sf {
class Color;
}

namespace sv {

/// The library's colour of the same name; white for `CUSTOM` and for any number that is no colour.
sf::Color colorToSFML(Color c);

} // namespace sv
