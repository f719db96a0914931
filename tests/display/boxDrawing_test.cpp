// Lines, blocks and shades as a person sees them.

#include "selvane/display/DisplayManager.h"
#include "support/WindowTest.h"

#include <fstream>
#include <sstream>

namespace {

constexpr int side = 9; // Of a cell, in pixels.
constexpr int columns = 16;
constexpr int rows = 10;

/// From ' ' for black to '#' for green.
char inkOf(const sf::Color &pixel) {
    return " -+=#"[(pixel.g + 32) / 64];
}

/// The pixels of all of them, sixteen in a row.
std::string sheetOf(const sf::Image &picture, const test::Extent &first) {
    std::string sheet;
    for (int y = 0; y < rows * side; ++y) {
        for (int x = 0; x < columns * side; ++x) {
            sheet += x > 0 && x % side == 0 ? " " : "";
            sheet += inkOf(picture.getPixel(static_cast<unsigned>(first.left + x),
                                            static_cast<unsigned>(first.top + y)));
        }
        sheet.erase(sheet.find_last_not_of(' ') + 1);
        sheet += y % side == side - 1 ? "\n\n" : "\n";
    }
    return sheet;
}

} // namespace

struct BoxDrawing : test::WindowTest {};

TEST_F(BoxDrawing, each_character_looks_as_on_the_sheet) {
    startDisplay("utf8:true,window_horizontal_pixels:162,window_vertical_pixels:108,"
                 "window_horizontal_chars:18,window_vertical_chars:12");
    sv::DisplayManager &display = sv::DisplayManager::getInstance();
    display.drawCh({1, 1}, U'\u2588', sv::GREEN);
    const test::Extent first = test::extentOf(sf::Color::Green, picture());
    EXPECT_EQ(first.right - first.left + 1, side);
    for (int i = 0; i < columns * rows; ++i)
        display.drawCh({static_cast<float>(1 + i % columns), static_cast<float>(1 + i / columns)},
                       static_cast<char32_t>(0x2500 + i), sv::GREEN);
    std::ostringstream expected;
    expected << std::ifstream(BOX_DRAWING).rdbuf();
    EXPECT_EQ(sheetOf(picture(), first), expected.str());
}
