#include "selvane/display/ScreenCapture.h"

#include "selvane/core/Color.h"
#include "selvane/display/DisplayManager.h"

#include <cmath>
#include <string_view>

namespace sv {

namespace {

/// By Color.
constexpr std::string_view color_letters = "krgybmcw";

char letterOf(unsigned char r, unsigned char g, unsigned char b) {
    for (int color = BLACK; color <= WHITE; ++color) {
        unsigned char red = 0;
        unsigned char green = 0;
        unsigned char blue = 0;
        colorToRGB(static_cast<Color>(color), red, green, blue);
        if (r == red && g == green && b == blue)
            return color_letters[static_cast<std::size_t>(color)];
    }
    return '*';
}

bool isBlank(char ch) {
    return ch == ' ' || ch == '\t' || ch == '\r' || ch == '\n';
}

char readable(char ch) {
    return ' ' < ch && ch <= '~' ? ch : '?';
}

void cutEnd(std::string &text, char unwanted) {
    text.erase(text.find_last_not_of(unwanted) + 1);
}

} // namespace

void captureScreen(bool is_wanted) {
    DisplayManager::getInstance().setCapture(is_wanted);
}

std::string screenText() {
    const ScreenCapture *capture = DisplayManager::getInstance().getCapture();
    return capture ? capture->text() : "";
}

std::string screenColors() {
    const ScreenCapture *capture = DisplayManager::getInstance().getCapture();
    return capture ? capture->colors() : "";
}

ScreenCapture::ScreenCapture(int new_columns, int new_rows)
    : columns(static_cast<std::size_t>(new_columns)), rows(static_cast<std::size_t>(new_rows)),
      drawn(columns * rows), shown(columns * rows) {}

void ScreenCapture::put(Vector cell, char ch, unsigned char r, unsigned char g, unsigned char b) {
    const float column = std::floor(cell.x + 0.5F);
    const float row = std::floor(cell.y + 0.5F);
    const bool is_inside = column >= 0 && row >= 0 && column < static_cast<float>(columns) &&
                           row < static_cast<float>(rows);
    if (!is_inside) // Nor is what is no number.
        return;
    const std::size_t index =
        static_cast<std::size_t>(row) * columns + static_cast<std::size_t>(column);
    drawn[index] = isBlank(ch) ? Cell() : Cell{readable(ch), letterOf(r, g, b)};
}

void ScreenCapture::show() {
    shown.swap(drawn);
    drawn.assign(shown.size(), Cell());
}

std::string ScreenCapture::joined(char Cell::*part) const {
    std::string all;
    for (std::size_t row = 0; row < rows; ++row) {
        std::string line;
        for (std::size_t column = 0; column < columns; ++column)
            line += shown[row * columns + column].*part;
        cutEnd(line, ' ');
        all += line + '\n';
    }
    cutEnd(all, '\n');
    return all;
}

} // namespace sv
