/// Reads a window back as the text that stands in its cells.
///
/// It knows the characters by having drawn each of them once, so a cell has to be a whole number of
/// pixels: the same character then looks the same everywhere.
#pragma once

#include <SFML/Graphics/Image.hpp>
#include <map>
#include <string>
#include <vector>

namespace test {

/// Settings for which it works: 78 x 24 cells of 13 x 32 pixels. The middles of the sixths of 78
/// columns are columns too.
inline constexpr char READABLE_WINDOW[] =
    "window_horizontal_pixels:1014,window_horizontal_chars:78";
/// For more rows of the same cells: that is a window of 40.
inline constexpr char HIGHER_WINDOW[] = "window_vertical_pixels:1280,window_vertical_chars:40";

class ScreenText {
  public:
    /// Draws every character, reads it, and shows an empty frame. REQUIRES: the display is started
    /// with READABLE_WINDOW, and the view's corner is (0, 0).
    ScreenText();

    /// The rows of the screen, blanks at their ends left out. A cell that shows none of the
    /// characters reads as '?'.
    std::vector<std::string> rows() const;

    /// The colour of the character in that cell; black if there is none.
    sf::Color colorAt(int column, int row) const;

  private:
    using Shape = std::vector<bool>; // Which pixels of a cell are lit.

    std::map<Shape, char> characters;
};

} // namespace test
