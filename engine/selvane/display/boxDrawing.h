/// Lines, blocks and shades, U+2500 to U+259F, as pieces that fill a cell from edge to edge, so
/// that neighbours meet: those of a font leave gaps where its cells are not the window's.
#pragma once

#include "selvane/core/Vector.h"
#include "selvane/display/InkMap.h"

#include <array>
#include <vector>

namespace sv {

/// Four corners in their order around the piece, in pixels, and how opaque it is at each, from 0
/// to 1.
struct BoxPiece {
    std::array<Vector, 4> corners;
    std::array<float, 4> opacity{1, 1, 1, 1};
};

constexpr bool isBoxDrawing(char32_t ch) {
    return 0x2500 <= ch && ch <= 0x259F;
}

/// These reach out of their cells by a line's thickness.
constexpr bool isDiagonal(char32_t ch) {
    return 0x2571 <= ch && ch <= 0x2573;
}

/// How thick a light line is in cells of that size, in pixels: 1 or more, whole.
float lightLine(Vector cell_size);

/// Appends what that character looks like in a cell whose edges are whole pixels. REQUIRES:
/// isBoxDrawing(ch).
void addBoxDrawing(std::vector<BoxPiece> &pieces, char32_t ch, const PixelArea &cell, float light);

} // namespace sv
