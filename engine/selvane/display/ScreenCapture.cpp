#include "selvane/display/ScreenCapture.h"

#include "selvane/core/Config.h"
#include "selvane/core/utf8.h"
#include "selvane/display/DisplayManager.h"

#include <cmath>

namespace sv {

namespace {

char32_t letterOf(Rgb color) {
    for (int c = BLACK; c <= WHITE; ++c)
        if (color == Rgb(static_cast<Color>(c)))
            return static_cast<char32_t>(COLOR_LETTERS[static_cast<std::size_t>(c)]);
    return U'*';
}

bool isBlank(char32_t ch) {
    return ch == U' ' || ch == U'\t' || ch == U'\r' || ch == U'\n';
}

bool isReadable(char32_t ch) {
    constexpr char32_t first_after_controls = 0xA0;
    return (U' ' < ch && ch <= U'~') ||
           (ch >= first_after_controls && Config::getInstance().getUtf8());
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

void ScreenCapture::put(Vector cell, char32_t ch, Rgb color) {
    const float column = std::floor(cell.x + 0.5F);
    const float row = std::floor(cell.y + 0.5F);
    const bool is_inside = column >= 0 && row >= 0 && column < static_cast<float>(columns) &&
                           row < static_cast<float>(rows);
    if (!is_inside) // Nor is what is no number.
        return;
    const std::size_t index =
        static_cast<std::size_t>(row) * columns + static_cast<std::size_t>(column);
    drawn[index] = isBlank(ch) ? Cell() : Cell{isReadable(ch) ? ch : U'?', letterOf(color)};
}

void ScreenCapture::show() {
    shown.swap(drawn);
    drawn.assign(shown.size(), Cell());
}

std::string ScreenCapture::joined(char32_t Cell::*part) const {
    std::string all;
    for (std::size_t row = 0; row < rows; ++row) {
        std::u32string line;
        for (std::size_t column = 0; column < columns; ++column)
            line += shown[row * columns + column].*part;
        line.erase(line.find_last_not_of(U' ') + 1);
        all += toUtf8(line) + '\n';
    }
    all.erase(all.find_last_not_of('\n') + 1);
    return all;
}

} // namespace sv
