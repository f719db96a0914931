#include "selvane/display/InkMap.h"

#include <algorithm>
#include <cmath>
#include <utility>

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

/// The piece that a pixel is in; the first or last one for a pixel outside. They are all nearly as
/// large as the first.
std::size_t pieceAt(float pixel, const std::vector<float> &edges) {
    const float last = static_cast<float>(edges.size()) - 2;
    const float guess = (pixel - edges[0]) / (edges[1] - edges[0]);
    auto piece = static_cast<std::size_t>(std::clamp(guess, 0.0F, last));
    while (piece > 0 && edges[piece] > pixel)
        --piece;
    while (piece + 2 < edges.size() && edges[piece + 1] <= pixel)
        ++piece;
    return piece;
}

} // namespace

InkMap::InkMap(std::vector<float> new_columns, std::vector<float> new_rows)
    : columns(std::move(new_columns)), rows(std::move(new_rows)),
      pieces((columns.size() - 1) * (rows.size() - 1)) {
    fill();
}

/// Each piece is its own place, so that no area is found twice; the outermost have no outer edge.
void InkMap::fill() {
    constexpr float everywhere = INFINITY;
    const std::size_t end_column = columns.size() - 1;
    const std::size_t end_row = rows.size() - 1;
    for (std::size_t row = 0; row < end_row; ++row)
        for (std::size_t column = 0; column < end_column; ++column)
            pieces[indexOf(column, row)] = {
                column == 0 ? -everywhere : columns[column], row == 0 ? -everywhere : rows[row],
                column + 1 == end_column ? everywhere : columns[column + 1],
                row + 1 == end_row ? everywhere : rows[row + 1]};
}

InkMap::Range InkMap::piecesOf(const PixelArea &area) const {
    if (area.isEmpty())
        return {};
    return {pieceAt(area.left, columns), pieceAt(area.top, rows), pieceAt(area.right, columns) + 1,
            pieceAt(area.bottom, rows) + 1};
}

/// Each piece takes what is in it: a rectangle around two neighbours that reach into it would be
/// far larger.
void InkMap::add(const PixelArea &area) {
    const Range range = piecesOf(area);
    for (std::size_t row = range.first_row; row < range.end_row; ++row)
        for (std::size_t column = range.first_column; column < range.end_column; ++column) {
            const PixelArea here =
                common(area, {columns[column], rows[row], columns[column + 1], rows[row + 1]});
            PixelArea &piece = pieces[indexOf(column, row)];
            if (!here.isEmpty())
                piece = around(piece, here);
        }
}

void InkMap::findInk(const PixelArea &area, std::vector<PixelArea> &found) const {
    const Range range = piecesOf(area);
    for (std::size_t row = range.first_row; row < range.end_row; ++row)
        for (std::size_t column = range.first_column; column < range.end_column; ++column) {
            const PixelArea here = common(pieces[indexOf(column, row)], area);
            if (!here.isEmpty())
                found.push_back(here);
        }
}

} // namespace sv
