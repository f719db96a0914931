/// Divides the world into equal cells and notes in each which boxes reach into it, so that two
/// boxes that touch have a cell in common. Boxes are known by a number, their place in a list.
///
/// Exact at any size and position: what is beyond the world is in the outermost cells, and a
/// coordinate that grows never gets into an earlier cell, whatever the rounding.
#pragma once

#include "selvane/core/Box.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace sv {

/// The upper left and the lower right corner of a box.
struct Corners {
    Vector low;
    Vector high;

    explicit Corners(const Box &box)
        : low(box.corner), high{end(box.corner.x, box.horizontal),
                                end(box.corner.y, box.vertical)} {}

    friend bool operator==(const Corners &, const Corners &) = default;

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
    /// The cells that a box reaches into.
    struct Range {
        std::uint16_t left, top, right, bottom;

        friend bool operator==(const Range &, const Range &) = default;

        /// Whether there are so many cells that all boxes are looked through faster.
        bool isWide() const { return (right - left + 1) * (bottom - top + 1) > most_cells; }
    };

    /// Without boxes, in a world of that many columns and rows, 1 to 1000.
    void reset(const Box &world, int column_count, int row_count);

    Range rangeOf(const Corners &box) const {
        if (!(box == last_box)) {
            last_range = compute(box);
            last_box = box;
        }
        return last_range;
    }

    void insert(std::uint32_t number, const Range &range);
    void remove(std::uint32_t number, const Range &range);

    /// Calls `visitor` with the number of each box that has a cell in common with the range, maybe
    /// repeatedly, in any order, until it returns true; whether it did. REQUIRES: it is not wide.
    template<typename Visitor>
    bool visit(const Range &range, Visitor visitor) const {
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

  private:
    using Numbers = std::vector<std::uint32_t>;

    static constexpr int most_cells = 16; // Of a range that is not wide.

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

    Range compute(const Corners &box) const {
        return {columns.cellOf(box.low.x), rows.cellOf(box.low.y), columns.cellOf(box.high.x),
                rows.cellOf(box.high.y)};
    }
    template<typename Action>
    void forEachList(const Range &range, Action action);

    Axis columns;
    Axis rows;
    std::vector<Numbers> cells{1}; // Row by row.
    Numbers wide;                  // Of the wide boxes, which are in no cell.
    // A box is mostly asked for twice in a row: where it would be, and when it gets there.
    mutable Corners last_box{Box{}};
    mutable Range last_range{};
};

} // namespace sv
