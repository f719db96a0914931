#include "support/ScreenText.h"

#include "selvane/display/DisplayManager.h"
#include "support/WindowTest.h"

#include <algorithm>

namespace test {

namespace {

constexpr int columns = 78;
constexpr unsigned cell_width = 13;
constexpr unsigned cell_height = 32;
// The rectangle behind the next character begins a tenth of a cell early, and those of the next row
// a fifth of a cell late: what is outside of that belongs to the neighbours.
constexpr unsigned visible_width = 11;
constexpr unsigned first_line = 7;

int brightness(const sf::Color &c) {
    return std::max({c.r, c.g, c.b});
}

std::vector<sf::Color> pixelsOf(const sf::Image &image, int column, int row) {
    std::vector<sf::Color> pixels;
    for (unsigned y = first_line; y < cell_height; ++y)
        for (unsigned x = 0; x < visible_width; ++x)
            pixels.push_back(image.getPixel(static_cast<unsigned>(column) * cell_width + x,
                                            static_cast<unsigned>(row) * cell_height + y));
    return pixels;
}

std::vector<bool> shapeOf(const sf::Image &image, int column, int row) {
    const auto pixels = pixelsOf(image, column, row);
    std::vector<bool> shape;
    for (const sf::Color &pixel : pixels)
        shape.push_back(brightness(pixel) > 127);
    return shape;
}

} // namespace

ScreenText::ScreenText() {
    constexpr char first = '!';
    constexpr char last = '~';
    sv::DisplayManager &display = sv::DisplayManager::getInstance();
    display.swapBuffers();
    // Every second cell of the even rows, so that none reaches into another.
    const auto placeOf = [](char c) {
        return std::pair{(c - first) * 2 % columns, (c - first) * 2 / columns * 2};
    };
    for (char c = first; c <= last; ++c)
        display.drawCh(
            {static_cast<float>(placeOf(c).first), static_cast<float>(placeOf(c).second)}, c,
            sv::WHITE);
    const sf::Image image = WindowTest::picture();
    for (char c = first; c <= last; ++c)
        characters[shapeOf(image, placeOf(c).first, placeOf(c).second)] = c;
    characters[Shape((cell_height - first_line) * visible_width)] = ' ';
    display.swapBuffers();
}

std::vector<std::string> ScreenText::rows() const {
    const sf::Image image = WindowTest::picture();
    std::vector<std::string> rows;
    for (int row = 0; row < sv::DisplayManager::getInstance().getVertical(); ++row) {
        std::string text;
        for (int column = 0; column < columns; ++column) {
            const auto found = characters.find(shapeOf(image, column, row));
            text += found == characters.end() ? '?' : found->second;
        }
        text.erase(text.find_last_not_of(' ') + 1);
        rows.push_back(text);
    }
    return rows;
}

sf::Color ScreenText::colorAt(int column, int row) const {
    const auto pixels = pixelsOf(WindowTest::picture(), column, row);
    return *std::max_element(pixels.begin(), pixels.end(), [](const auto &a, const auto &b) {
        return brightness(a) < brightness(b);
    });
}

} // namespace test
