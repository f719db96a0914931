// Which cell a pixel belongs to, and that no pixel is left between them.

#include "selvane/display/DisplayManager.h"
#include "support/WindowTest.h"

#include <SFML/Graphics/RenderWindow.hpp>
#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

namespace {

using sv::DisplayManager;
using sv::Vector;

struct CellEdges : test::WindowTest {};

/// Cells of 12.8 x 32, 12.5 x 17.5 (whose rectangles end in the middles of pixels), 5 x 7.5 and 31
/// x 9 pixels.
constexpr const char *cell_sizes[] = {
    "window_horizontal_pixels:256,window_vertical_pixels:768,window_horizontal_chars:20",
    "window_horizontal_pixels:400,window_vertical_pixels:420,window_horizontal_chars:32",
    "window_horizontal_pixels:160,window_vertical_pixels:180,window_horizontal_chars:32",
    "window_horizontal_pixels:992,window_vertical_pixels:216,window_horizontal_chars:32"};

/// Fills the window with a character, the later cells above or left of the earlier ones if `back`.
sf::Image fullOf(char32_t ch, bool back, const std::optional<sv::Rgb> &background) {
    DisplayManager &display = DisplayManager::getInstance();
    display.getWindow()->clear(sf::Color::Red); // So that every cell's rectangle is drawn.
    const int count = (display.getHorizontal() + 1) * (display.getVertical() + 1);
    for (int i = 0; i < count; ++i) {
        const int at = back ? count - 1 - i : i;
        const Vector pos{static_cast<float>(at % (display.getHorizontal() + 1)),
                         static_cast<float>(at / (display.getHorizontal() + 1) - 1)};
        display.drawCh(pos, ch, sv::GREEN, background);
    }
    return test::WindowTest::picture();
}

/// Draws a character into every cell, at these cells' corners and half of one beside them.
void drawEverywhere(char ch, float beside, const std::optional<sv::Rgb> &background) {
    DisplayManager &display = DisplayManager::getInstance();
    for (int i = 0; i < 82 * 26; ++i) {
        const Vector pos{static_cast<float>(i % 82) - 1 + beside, static_cast<float>(i / 82) - 2};
        if (background)
            display.drawCh(pos, ch, sv::WHITE, background);
        else
            display.drawCh(pos, ch);
    }
}

/// The rows and columns that are of one colour from edge to edge.
int uniformLines(const sf::Image &image, const sf::Color &color) {
    const auto [width, height] = image.getSize();
    int count = 0;
    for (unsigned y = 0; y < height; ++y) {
        unsigned x = 0;
        while (x < width && image.getPixel(x, y) == color)
            ++x;
        count += x == width ? 1 : 0;
    }
    for (unsigned x = 0; x < width; ++x) {
        unsigned y = 0;
        while (y < height && image.getPixel(x, y) == color)
            ++y;
        count += y == height ? 1 : 0;
    }
    return count;
}

TEST_F(CellEdges, later_cells_cover_earlier_ones) {
    for (const char *mode : {"utf8:true", "utf8:false"}) {
        startDisplay(std::string("window_background_color:blue,") + mode);
        DisplayManager::getInstance().swapBuffers(); // Only now is nothing in it.
        for (const auto &background :
             {std::optional<sv::Rgb>(sv::GREEN), std::optional<sv::Rgb>()}) {
            drawEverywhere('W', 0, std::nullopt);
            drawEverywhere('g', 0.5F, sv::Rgb(sv::RED));
            drawEverywhere(' ', 0.25F, background);
            EXPECT_EQ(uniformLines(picture(), background ? sf::Color::Green : sf::Color::Blue),
                      1024 + 768)
                << mode;
        }
        DisplayManager::getInstance().shutDown();
    }
}

TEST_F(CellEdges, box_drawing_leaves_no_gaps) {
    for (const char *size : cell_sizes) {
        SCOPED_TRACE(size);
        startDisplay("utf8:true," + std::string(size));
        const auto [width, height] = DisplayManager::getInstance().getWindow()->getSize();
        const auto all = static_cast<int>(width + height);
        const Vector cell = DisplayManager::getInstance().getCellSize();
        const int cells = DisplayManager::getInstance().getVertical() +
                          DisplayManager::getInstance().getHorizontal();
        const float light = std::max(1.0F, std::round(std::min(cell.x, cell.y) / 7));
        for (const bool back : {false, true}) {
            for (const auto &background :
                 {std::optional<sv::Rgb>(), std::optional<sv::Rgb>(sv::BLUE)}) {
                EXPECT_EQ(uniformLines(fullOf(U'\u2588', back, background), sf::Color::Green), all);
                // A line in each row and column; the outermost may be cut.
                const int lines =
                    uniformLines(fullOf(U'\u253C', back, background), sf::Color::Green);
                EXPECT_NEAR(static_cast<float>(lines), light * static_cast<float>(cells),
                            2 * light);
            }
            EXPECT_EQ(uniformLines(fullOf(U' ', back, sv::Rgb(0, 255, 0)), sf::Color::Green), all);
            // A third of it, over black.
            EXPECT_EQ(uniformLines(fullOf(U'\u2592', back, sv::Rgb(0, 0, 0)), {0, 128, 0}), all);
        }
        DisplayManager::getInstance().shutDown();
    }
}

} // namespace
