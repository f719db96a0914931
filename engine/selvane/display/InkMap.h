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
    /// Of a window of that size, in pieces of that size, one of which begins at `corner`; in
    /// pixels.
    InkMap(Vector window_size, Vector corner, Vector piece_size);

    /// The window shows the background everywhere.
    void clear() { pieces.assign(pieces.size(), {}); }

    /// Nobody knows what the window shows: it is ink everywhere, as in a new map.
    void fill();

    void add(const PixelArea &area);

    /// A part of the area that has all ink in it; empty if there is none.
    PixelArea inkIn(const PixelArea &area) const;

  private:
    /// From the first column and row to those behind the last ones.
    struct Range {
        int first_column;
        int first_row;
        int end_column;
        int end_row;
    };

    Range piecesOf(const PixelArea &area) const;
    std::size_t indexOf(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
               static_cast<std::size_t>(column);
    }

    Vector first_corner;
    Vector pieces_per_pixel;
    int columns;
    int rows;
    std::vector<PixelArea> pieces; // The ink in each, by rows.
};

} // namespace sv
