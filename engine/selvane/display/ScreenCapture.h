/// What the screen shows, as text: rows of characters and, apart from them, rows of colours. Works
/// with a window and headless alike, and is meant for tests, for bug reports, and for pictures of a
/// game in a text file.
///
/// A character is in the cell that is nearest to its position; shaking does not move it. One that
/// is not ASCII reads as '?', unless the configuration has `utf8:true,`: then the text is UTF-8,
/// and only control characters do. Backgrounds are not seen. A circle, square or triangle is a '#'
/// in every cell whose middle it covers. What a game draws into DisplayManager::getWindow() by
/// itself is not seen.
#pragma once

#include "selvane/core/Color.h"
#include "selvane/core/Vector.h"

#include <string>
#include <vector>

namespace sv {

/// Begins or ends capturing, which is off by default. While it is on, drawing headless answers 0 as
/// if there were a window. Beginning anew forgets what was captured.
void captureScreen(bool is_wanted = true);

/// The frame that DisplayManager::swapBuffers() has shown last: in the game loop, what was drawn in
/// the step before. Rows end with '\n' except the last one; blanks at the ends of rows and blank
/// rows at the end are cut. Empty while nothing is captured; after a shut-down still the last
/// frame.
std::string screenText();

/// The same cells as one letter for each character's colour: k is black, then r, g, y, b, m, c and
/// w as the colours' names begin; '*' is any other colour. Blanks have none.
std::string screenColors();

class ScreenCapture {
  public:
    /// Cells.
    ScreenCapture(int new_columns, int new_rows);

    /// Draws a character at a cell of the window; outside of it, nothing.
    void put(Vector cell, char32_t ch, Rgb color);

    /// What was drawn since the last call is the frame that is shown.
    void show();

    std::string text() const { return joined(&Cell::ch); }
    std::string colors() const { return joined(&Cell::color); }

  private:
    struct Cell {
        char32_t ch = U' ';
        char32_t color = U' ';
    };

    std::string joined(char32_t Cell::*part) const;

    std::size_t columns;
    std::size_t rows;
    std::vector<Cell> drawn;
    std::vector<Cell> shown;
};

} // namespace sv
