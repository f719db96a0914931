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
    void findInk(const PixelArea &area, std::vector<PixelArea> &found);

    /// Finds what was in the area before, and adds the area.
    void findInkAndAdd(const PixelArea &area, std::vector<PixelArea> &found);

  private:
    /// The edges of the columns or rows, in rising order: one more than there are pieces.
    class Edges {
      public:
        explicit Edges(std::vector<float> new_pixels);

        std::size_t pieceCount() const { return pixels.size() - 1; }
        float operator[](std::size_t edge) const { return pixels[edge]; }

        /// The piece that a pixel is in; the first or last one for a pixel outside.
        std::size_t pieceAt(float pixel) const;

        /// The same, searched from the piece `from` on. REQUIRES: the pixel is not before it.
        std::size_t pieceAt(float pixel, std::size_t from) const;

      private:
        std::vector<float> pixels;
        float pieces_per_pixel; // By the first one's size. A division takes longer.
    };

    template<typename Visit>
    void visitPieces(const PixelArea &area, Visit visit);

    Edges columns;
    Edges rows;
    std::vector<PixelArea> pieces; // The ink in each, by rows.
};

} // namespace sv
