#include "selvane/world/SolidGrid.h"

#include <algorithm>

namespace sv {

/// In a world without an extent, or without an end, all is in the first cell.
SolidGrid::Axis SolidGrid::Axis::divided(float start, float extent, int count) {
    constexpr int most = 1000;
    const int cells = std::clamp(count, 1, most);
    return {start, extent > 0 ? static_cast<float>(cells) / extent : 0,
            static_cast<float>(cells - 1), static_cast<std::size_t>(cells)};
}

void SolidGrid::reset(const Box &world, int column_count, int row_count) {
    columns = Axis::divided(world.corner.x, world.horizontal, column_count);
    rows = Axis::divided(world.corner.y, world.vertical, row_count);
    cells.resize(columns.count * rows.count);
    for (Numbers &cell : cells)
        cell.clear();
    wide.clear();
    last_box = Corners(Box{});
    last_range = compute(last_box);
}

template<typename Action>
void SolidGrid::forEachList(const Range &range, Action action) {
    if (range.isWide()) {
        action(wide);
        return;
    }
    for (std::size_t row = range.top; row <= range.bottom; ++row)
        for (std::size_t column = range.left; column <= range.right; ++column)
            action(cells[row * columns.count + column]);
}

void SolidGrid::insert(std::uint32_t number, const Range &range) {
    forEachList(range, [=](Numbers &list) { list.push_back(number); });
}

void SolidGrid::remove(std::uint32_t number, const Range &range) {
    forEachList(range, [=](Numbers &list) {
        *std::find(list.begin(), list.end(), number) = list.back();
        list.pop_back();
    });
}

} // namespace sv
