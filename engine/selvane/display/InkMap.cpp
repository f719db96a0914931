#include "selvane/display/InkMap.h"

#include <algorithm>
#include <cmath>

namespace sv {

namespace {

PixelArea around(const PixelArea &a, const PixelArea &b) {
    return a.isEmpty() ? b
                       : PixelArea{std::min(a.left, b.left), std::min(a.top, b.top),
                                   std::max(a.right, b.right), std::max(a.bottom, b.bottom)};
}

PixelArea common(const PixelArea &a, const PixelArea &b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

/// Whole pieces before that one, from 0 to `most`.
int pieceAt(float pixel, float first, float per_pixel, int most) {
    return static_cast<int>(
        std::clamp((pixel - first) * per_pixel, 0.0F, static_cast<float>(most)));
}

} // namespace

InkMap::InkMap(Vector window_size, Vector corner, Vector piece_size)
    : first_corner(corner), pieces_per_pixel{1 / piece_size.x, 1 / piece_size.y},
      columns(static_cast<int>(std::ceil((window_size.x - corner.x) / piece_size.x))),
      rows(static_cast<int>(std::ceil((window_size.y - corner.y) / piece_size.y))),
      pieces(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows)) {
    fill();
}

void InkMap::fill() {
    constexpr float everywhere = INFINITY;
    pieces.assign(pieces.size(), {-everywhere, -everywhere, everywhere, everywhere});
}

InkMap::Range InkMap::piecesOf(const PixelArea &area) const {
    if (area.isEmpty())
        return {};
    return {pieceAt(area.left, first_corner.x, pieces_per_pixel.x, columns),
            pieceAt(area.top, first_corner.y, pieces_per_pixel.y, rows),
            std::min(pieceAt(area.right, first_corner.x, pieces_per_pixel.x, columns) + 1, columns),
            std::min(pieceAt(area.bottom, first_corner.y, pieces_per_pixel.y, rows) + 1, rows)};
}

void InkMap::add(const PixelArea &area) {
    const Range range = piecesOf(area);
    for (int row = range.first_row; row < range.end_row; ++row)
        for (int column = range.first_column; column < range.end_column; ++column) {
            PixelArea &piece = pieces[indexOf(column, row)];
            piece = around(piece, area);
        }
}

PixelArea InkMap::inkIn(const PixelArea &area) const {
    PixelArea ink;
    const Range range = piecesOf(area);
    for (int row = range.first_row; row < range.end_row; ++row)
        for (int column = range.first_column; column < range.end_column; ++column) {
            const PixelArea here = common(pieces[indexOf(column, row)], area);
            if (!here.isEmpty())
                ink = around(ink, here);
        }
    return ink;
}

} // namespace sv
