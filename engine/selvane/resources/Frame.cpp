#include "selvane/resources/Frame.h"

#include "selvane/core/utf8.h"
#include "selvane/display/DisplayManager.h"

#include <algorithm>

namespace sv {

namespace {

/// How far the centre of the first of `count` cells is from the centre of them all.
float halfSpan(int count) {
    return (static_cast<float>(count) - 1) * 0.5F;
}

template<typename Character>
bool isTransparent(Character ch, char transparency) {
    return transparency != NO_TRANSPARENCY && ch == static_cast<Character>(transparency);
}

} // namespace

int Frame::draw(Vector position, Color color, char transparency) const {
    return drawCells(position, color, transparency);
}

int Frame::draw(Vector position, Rgb color, char transparency) const {
    return drawCells(position, color, transparency);
}

template<typename AnyColor>
int Frame::drawCells(Vector position, AnyColor color, char transparency) const {
    if (width <= 0 || height <= 0)
        return 0;
    const Vector offset{halfSpan(width), halfSpan(height)};
    const auto row_length = static_cast<std::size_t>(width);
    // The size is only a claim: there may be fewer characters.
    const auto rows = std::min(static_cast<std::size_t>(height), frame_str.size() / row_length + 1);

    DisplayManager &display = DisplayManager::getInstance();
    std::size_t i = 0;
    int result = 0;
    forEachCell(frame_str, [&](auto ch) {
        const std::size_t row = i / row_length;
        const Vector cell{static_cast<float>(i % row_length), static_cast<float>(row)};
        if (row == rows)
            return false;
        const Vector at = position + cell - offset;
        const std::optional<Rgb> own = i < colors.size() ? colors[i] : std::nullopt;
        ++i;
        if (!isTransparent(ch, transparency))
            result = own ? display.drawCh(at, ch, *own) : display.drawCh(at, ch, color);
        return result == 0;
    });
    return result == 0 ? 0 : -1;
}

} // namespace sv
