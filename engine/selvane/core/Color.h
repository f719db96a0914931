/// The engine's colours and their conversions. What the windowing library makes of one is in
/// display/sfmlColor.h.
#pragma once

#include <string>

namespace sv {

enum Color : int {
    BLACK = 0,
    RED = 1,
    GREEN = 2,
    YELLOW = 3,
    BLUE = 4,
    MAGENTA = 5,
    CYAN = 6,
    WHITE = 7,
    CUSTOM = 8, ///< The holder keeps red, green and blue of its own.
};

/// The colour of drawn characters.
inline constexpr Color COLOR_DEFAULT = WHITE;

/// Writes the components of `c`, 0 or 255 each. `CUSTOM`, and any number that is no colour, leaves
/// them as they are.
void colorToRGB(Color c, unsigned char &r, unsigned char &g, unsigned char &b);

/// "Black" to "White"; "Unknown color" for `CUSTOM` and for any number that is no colour.
std::string colorToString(Color c);

} // namespace sv
