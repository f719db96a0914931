#include "selvane/world/SolidGrid.h"

#include <algorithm>
#include <cmath>

namespace sv {

namespace {

/// The lane of a box that came there by `way`: as far as 64 more moves like that take it, but no
/// further than three, in cells of characters and not of the grid: it would have many neighbours.
/// A longer move is a jump, which says nothing about the next one.
Corners laneOf(const Corners &box, Vector way) {
    constexpr float moves = 64;
    constexpr float longest = 3;
    const float length = std::max(std::fabs(way.x), std::fabs(way.y));
    if (!(length <= longest))
        return box;
    return box.swept(way * (length * moves <= longest ? moves : longest / length));
}

} // namespace

/// In a world without an extent, or without an end, all is in the first cell.
SolidGrid::Axis SolidGrid::Axis::divided(float start, float extent, int count) {
    constexpr int most = 1000;
    const int cells = std::clamp(count, 1, most);
    return {start, extent > 0 ? static_cast<float>(cells) / extent : 0,
            static_cast<float>(cells - 1), static_cast<std::size_t>(cells)};
}

void SolidGrid::reset(const Box &world, int column_count, int row_count, bool new_has_neighbours) {
    has_neighbours = new_has_neighbours;
    columns = Axis::divided(world.corner.x, world.horizontal, column_count);
    rows = Axis::divided(world.corner.y, world.vertical, row_count);
    cells.resize(columns.count * rows.count);
    for (Numbers &cell : cells)
        cell.clear();
    wide.clear();
    filed.clear();
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

void SolidGrid::insert(std::uint32_t number, const Corners &lane) {
    if (number >= filed.size())
        filed.resize(number + std::size_t{1});
    filed[number].lane = lane;
    forEachList(rangeOf(lane), [=](Numbers &list) { list.push_back(number); });
    if (has_neighbours)
        link(number);
}

void SolidGrid::link(std::uint32_t number) {
    const Corners &lane = filed[number].lane;
    Numbers &neighbours = filed[number].neighbours;
    visit(lane, [&](std::uint32_t other) {
        if (lane.mayTouch(filed[other].lane) && other != number)
            neighbours.push_back(other);
        return false;
    });
    std::sort(neighbours.begin(), neighbours.end());
    neighbours.erase(std::unique(neighbours.begin(), neighbours.end()), neighbours.end());
    for (const std::uint32_t other : neighbours)
        filed[other].neighbours.push_back(number);
}

void SolidGrid::remove(std::uint32_t number) {
    auto &[lane, neighbours] = filed[number];
    forEachList(rangeOf(lane), [=](Numbers &list) {
        *std::find(list.begin(), list.end(), number) = list.back();
        list.pop_back();
    });
    for (const std::uint32_t other : neighbours)
        std::erase(filed[other].neighbours, number);
    neighbours.clear();
    lane = Corners::nowhere();
}

void SolidGrid::changeLane(std::uint32_t number, const Corners &box, Vector from) {
    remove(number);
    insert(number, laneOf(box, box.low - from));
}

} // namespace sv
