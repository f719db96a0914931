/// Divides the world into equal cells and notes in each which boxes reach into it, so that two
/// boxes that touch have a cell in common. Boxes are known by a number, their place in a list.
///
/// A box that moves is noted with its lane: all that it covers if it goes on like that for some
/// steps. Boxes touch only where their lanes do. So the grid is asked once for each lane, who are
/// its neighbours, and while a box is in its lane it is compared with those: mostly none.
///
/// Exact at any size and position: what is beyond the world is in the outermost cells, and a
/// coordinate that grows never gets into an earlier cell, whatever the rounding.
#pragma once

#include "selvane/core/Box.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace sv {

/// The upper left and the lower right corner of a box.
struct Corners {
    Vector low;
    Vector high;

    explicit Corners(const Box &box)
        : low(box.corner), high{end(box.corner.x, box.horizontal),
                                end(box.corner.y, box.vertical)} {}

    /// Touches nothing.
    static Corners nowhere() {
        constexpr float nan = std::numeric_limits<float>::quiet_NaN();
        return Corners({{nan, nan}, 0, 0});
    }

    /// Extended to where the box is after it went that way.
    Corners swept(Vector way) const {
        Corners all = *this;
        all.low = {std::min(low.x, low.x + way.x), std::min(low.y, low.y + way.y)};
        all.high = {std::max(high.x, high.x + way.x), std::max(high.y, high.y + way.y)};
        return all;
    }

    /// False for NaN.
    bool holds(const Corners &other) const {
        return low.x <= other.low.x && low.y <= other.low.y && other.high.x <= high.x &&
               other.high.y <= high.y;
    }

    /// False for boxes that do not touch, and always for NaN. True for those that do, and for some
    /// of negative extents, so that boxIntersectsBox() has the last word.
    bool mayTouch(const Corners &other) const {
        // One branch for all four: two boxes rarely touch.
        return static_cast<bool>(
            static_cast<int>(low.x <= other.high.x) & static_cast<int>(other.low.x <= high.x) &
            static_cast<int>(low.y <= other.high.y) & static_cast<int>(other.low.y <= high.y));
    }

  private:
    /// The start itself for a negative extent: only there does anything touch such a box.
    static constexpr float end(float start, float extent) {
        return start + extent >= start ? start + extent : start;
    }
};

class SolidGrid {
  public:
    /// Without boxes, in a world of that many columns and rows, 1 to 1000. Neighbours are only kept
    /// if they are wanted.
    void reset(const Box &world, int column_count, int row_count, bool new_has_neighbours);

    /// A box that rests is its own lane.
    void insert(std::uint32_t number, const Corners &lane);
    void remove(std::uint32_t number);

    /// To a new place; its upper left corner was at `from`.
    void move(std::uint32_t number, const Corners &box, Vector from) {
        if (!filed[number].lane.holds(box))
            changeLane(number, box, from);
    }

    // REQUIRES for the next two: neighbours are kept.

    /// Whether visitFrom() would visit none: a quick answer for most boxes.
    bool isAlone(std::uint32_t number, const Corners &box) const {
        return filed[number].neighbours.empty() && filed[number].lane.holds(box);
    }

    /// As visit(), for the box of that number at any place, and always to the end.
    template<typename Visitor>
    void visitFrom(std::uint32_t number, const Corners &box, Visitor visitor) const {
        if (!filed[number].lane.holds(box)) {
            visit(box, visitor);
            return;
        }
        for (const std::uint32_t neighbour : filed[number].neighbours)
            visitor(neighbour);
    }

    /// Calls `visitor` with the number of each box that may touch `box`, maybe repeatedly, in any
    /// order, until it returns true; whether it did.
    template<typename Visitor>
    bool visit(const Corners &box, Visitor visitor) const {
        const Range range = rangeOf(box);
        if (!range.isWide())
            return visitCells(range, visitor);
        for (std::uint32_t number = 0; number < filed.size(); ++number)
            if (visitor(number))
                return true;
        return false;
    }

  private:
    using Numbers = std::vector<std::uint32_t>;

    static constexpr int most_cells = 16; // Of a range that is not wide.

    struct Filed {
        Corners lane = Corners::nowhere();
        Numbers neighbours;
    };

    /// The cells that a box reaches into.
    struct Range {
        std::uint16_t left, top, right, bottom;

        /// Whether there are so many cells that all boxes are looked through faster.
        bool isWide() const { return (right - left + 1) * (bottom - top + 1) > most_cells; }
    };

    /// The columns, or the rows.
    struct Axis {
        float first = 0; // Where the first one begins.
        float per_unit = 0;
        float last = 0;
        std::size_t count = 1;

        static Axis divided(float start, float extent, int count);
        std::uint16_t cellOf(float coordinate) const {
            const float cell = (coordinate - first) * per_unit;
            const float from_first = cell > 0 ? cell : 0; // Also for NaN.
            return static_cast<std::uint16_t>(
                static_cast<int>(from_first < last ? from_first : last));
        }
    };

    Range rangeOf(const Corners &box) const {
        return {columns.cellOf(box.low.x), rows.cellOf(box.low.y), columns.cellOf(box.high.x),
                rows.cellOf(box.high.y)};
    }

    template<typename Visitor>
    bool visitCells(const Range &range, Visitor visitor) const {
        const std::size_t width = range.right - range.left + std::size_t{1};
        const Numbers *cell = &cells[range.top * columns.count + range.left];
        for (auto row = range.top; row <= range.bottom; ++row, cell += columns.count - width)
            for (const Numbers *end = cell + width; cell != end; ++cell)
                for (const std::uint32_t number : *cell)
                    if (visitor(number))
                        return true;
        for (const std::uint32_t number : wide)
            if (visitor(number))
                return true;
        return false;
    }

    void changeLane(std::uint32_t number, const Corners &box, Vector from);
    void link(std::uint32_t number);
    template<typename Action>
    void forEachList(const Range &range, Action action);

    Axis columns;
    Axis rows;
    std::vector<Numbers> cells{1}; // Row by row.
    Numbers wide;                  // Of the wide boxes, which are in no cell.
    std::vector<Filed> filed;      // By number.
    bool has_neighbours = false;
};

} // namespace sv
