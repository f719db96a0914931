/// The engine's colours as SFML's.
#pragma once

#include "selvane/core/Color.h"

namespace sf {
class Color;
}

namespace sv {

/// SFML's colour of the same name; white, with a line at level 5, for `CUSTOM` and for numbers that
/// are not colours.
sf::Color colorToSFML(Color c);

} // namespace sv
