/// The engine's colours and their conversions. SFML's colours are in display/sfmlColor.h.
#pragma once

#include <optional>
#include <string>
#include <string_view>

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

/// A letter for each colour from BLACK to WHITE, in that order: in the screen as text, and in
/// sprite files.
inline constexpr std::string_view COLOR_LETTERS = "krgybmcw";

/// Any colour by its components, 0 to 255 each. White by default.
struct Rgb {
    unsigned char r = 255;
    unsigned char g = 255;
    unsigned char b = 255;

    constexpr Rgb() = default;
    constexpr Rgb(unsigned char red, unsigned char green, unsigned char blue)
        : r(red), g(green), b(blue) {}

    /// That colour; white for `CUSTOM` and for numbers that are not colours. Implicit, so that
    /// whatever takes any colour takes one of the eight by its name.
    Rgb(Color c); // NOLINT(google-explicit-constructor)

    friend bool operator==(const Rgb &, const Rgb &) = default;
};

/// "#rrggbb", six hexadecimal digits.
std::string toString(Rgb color);

/// The colour of such a text, in lower or upper case; nothing for any other text.
std::optional<Rgb> rgbFromText(std::string_view text);

/// Writes the components of `c`, 0 or 255 each. `CUSTOM` and numbers that are not colours leave
/// them unchanged; the latter are logged at level 5.
void colorToRGB(Color c, unsigned char &r, unsigned char &g, unsigned char &b);

/// "Black" to "White"; "Unknown color" for `CUSTOM` and for numbers that are not colours.
std::string colorToString(Color c);

/// The colour of a lower-case name, "black" to "white"; nothing for any other text.
std::optional<Color> colorFromName(std::string_view name);

} // namespace sv
