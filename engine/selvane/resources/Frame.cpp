#include "selvane/resources/Frame.h"

#include "selvane/display/DisplayManager.h"

#include <algorithm>

namespace sv {

namespace {

/// How far the centre of the first of `count` cells is from the centre of them all.
float halfSpan(int count) {
    return (static_cast<float>(count) - 1) * 0.5F;
}

} // namespace

int Frame::draw(Vector position, Color color, char transparency) const {
    if (width <= 0 || height <= 0)
        return 0;
    const Vector offset{halfSpan(width), halfSpan(height)};
    const auto row_length = static_cast<std::size_t>(width);
    // The size is only a claim: there may be fewer characters.
    const auto rows = std::min(static_cast<std::size_t>(height), frame_str.size() / row_length + 1);
    const std::size_t end = std::min(frame_str.size(), rows * row_length);

    DisplayManager &display = DisplayManager::getInstance();
    for (std::size_t i = 0; i < end; ++i) {
        const char c = frame_str[i];
        if (transparency != NO_TRANSPARENCY && c == transparency)
            continue;
        const std::size_t row = i / row_length;
        const Vector cell{static_cast<float>(i % row_length), static_cast<float>(row)};
        if (display.drawCh(position + cell - offset, c, color) != 0)
            return -1;
    }
    return 0;
}

} // namespace sv
