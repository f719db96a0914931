/// Where the window shows something other than its background: a rectangle around it in each of the
/// pieces into which the window is cut. A cell needs its own background only there.
#pragma once

#include "selvane/core/Vector.h"

#include <cstddef>
#include <vector>

namespace sv {

/// A rectangle by its edges, in pixels.
struct PixelArea {
    float left = 0;
    float top = 0;
    float right = 0;
    float bottom = 0;

    /// True also if an edge is NaN.
    bool isEmpty() const { return !(left < right && top < bottom); }
};

class InkMap {
  public:
    /// Of pieces between these pixels, in rising order, which cover the window.
    InkMap(std::vector<float> new_columns, std::vector<float> new_rows);

    /// The window shows the background everywhere.
    void clear() { pieces.assign(pieces.size(), {}); }

    /// Nobody knows what the window shows: it is ink everywhere, as in a new map.
    void fill();

    void add(const PixelArea &area);

    /// Appends parts of the area that together have all ink in it.
    void findInk(const PixelArea &area, std::vector<PixelArea> &found) const;

  private:
    /// From the first column and row to those behind the last ones.
    struct Range {
        std::size_t first_column = 0;
        std::size_t first_row = 0;
        std::size_t end_column = 0;
        std::size_t end_row = 0;
    };

    Range piecesOf(const PixelArea &area) const;
    std::size_t indexOf(std::size_t column, std::size_t row) const {
        return row * (columns.size() - 1) + column;
    }

    std::vector<float> columns; // Their left edges, and the right one of the last.
    std::vector<float> rows;
    std::vector<PixelArea> pieces; // The ink in each, by rows.
};

} // namespace sv
