/// How large a font is drawn in its cells, and what of it would be cut off there.
#pragma once

namespace sf {
class Font;
}

namespace sv {

// Where fonts put a glyph in its cell, as fractions of the cell's width and height: the rectangle
// behind a character is moved by these to lie under the glyph.
inline constexpr float RECTANGLE_LEFT = 10;
inline constexpr float RECTANGLE_DOWN = 5;

/// The character size in pixels for the configured font scale. Logs a warning for a scale that
/// gives no usable size, and returns the nearest one.
unsigned characterSize(float font_scale);

/// Logs a warning if the font has no characters of that size, or if they are so large that their
/// neighbours cut more than a tenth of a cell off them.
void warnIfSizeMisfits(const sf::Font &font, unsigned size);

} // namespace sv
