#include "selvane/display/InkMap.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace sv {

namespace {

PixelArea common(const PixelArea &a, const PixelArea &b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

void addPart(std::vector<PixelArea> &parts, const PixelArea &part) {
    if (!part.isEmpty())
        parts.push_back(part);
}

/// Makes the rectangle around the ink large enough for that part, too.
void widen(PixelArea &ink, const PixelArea &part) {
    if (part.isEmpty())
        return;
    ink = ink.isEmpty()
              ? part
              : PixelArea{std::min(ink.left, part.left), std::min(ink.top, part.top),
                          std::max(ink.right, part.right), std::max(ink.bottom, part.bottom)};
}

} // namespace

InkMap::Edges::Edges(std::vector<float> new_pixels)
    : pixels(std::move(new_pixels)), pieces_per_pixel(1 / (pixels[1] - pixels[0])) {}

/// All pieces are nearly as large as the first, so the guess is at most a few off. It is a little
/// too large, since most of what is asked for is an edge, and the piece begins there.
std::size_t InkMap::Edges::pieceAt(float pixel) const {
    constexpr float little = 1.0F / 1024;
    const float guess = (pixel - pixels[0]) * pieces_per_pixel + little;
    const float nearest = std::clamp(guess, 0.0F, static_cast<float>(pieceCount() - 1));
    auto piece = static_cast<std::size_t>(static_cast<int>(nearest));
    while (piece > 0 && pixels[piece] > pixel)
        --piece;
    return pieceAt(pixel, piece);
}

std::size_t InkMap::Edges::pieceAt(float pixel, std::size_t from) const {
    while (from + 1 < pieceCount() && pixels[from + 1] <= pixel)
        ++from;
    return from;
}

InkMap::InkMap(std::vector<float> new_columns, std::vector<float> new_rows)
    : columns(std::move(new_columns)), rows(std::move(new_rows)),
      pieces(columns.pieceCount() * rows.pieceCount()) {
    fill();
}

/// Calls `visit` with the place of each piece that the area touches, and with the ink in it.
template<typename Visit>
void InkMap::visitPieces(const PixelArea &area, Visit visit) {
    if (area.isEmpty())
        return;
    // Most areas end at an edge, but by rounding just before or just beyond it, which processors
    // guess wrong. So the piece beyond is always visited, too.
    constexpr float beyond = 1.0F / 64;
    const std::size_t first_column = columns.pieceAt(area.left);
    const std::size_t last_column = columns.pieceAt(area.right + beyond, first_column);
    const std::size_t first_row = rows.pieceAt(area.top);
    const std::size_t last_row = rows.pieceAt(area.bottom + beyond, first_row);
    for (std::size_t row = first_row; row <= last_row; ++row)
        for (std::size_t column = first_column; column <= last_column; ++column)
            visit(PixelArea{columns[column], rows[row], columns[column + 1], rows[row + 1]},
                  pieces[row * columns.pieceCount() + column]);
}

/// Each piece is its own place, so that no area is found twice; the outermost have no outer edge.
void InkMap::fill() {
    constexpr float everywhere = INFINITY;
    const std::size_t end_column = columns.pieceCount();
    const std::size_t end_row = rows.pieceCount();
    auto piece = pieces.begin();
    for (std::size_t row = 0; row < end_row; ++row)
        for (std::size_t column = 0; column < end_column; ++column)
            *piece++ = {column == 0 ? -everywhere : columns[column],
                        row == 0 ? -everywhere : rows[row],
                        column + 1 == end_column ? everywhere : columns[column + 1],
                        row + 1 == end_row ? everywhere : rows[row + 1]};
}

/// Each piece takes what is in it: a rectangle around two neighbours that reach into it would be
/// far larger.
void InkMap::add(const PixelArea &area) {
    visitPieces(area,
                [&](const PixelArea &place, PixelArea &ink) { widen(ink, common(area, place)); });
}

void InkMap::findInk(const PixelArea &area, std::vector<PixelArea> &found) {
    visitPieces(area, [&](const PixelArea & /*place*/, const PixelArea &ink) {
        addPart(found, common(ink, area));
    });
}

void InkMap::findInkAndAdd(const PixelArea &area, std::vector<PixelArea> &found) {
    visitPieces(area, [&](const PixelArea &place, PixelArea &ink) {
        addPart(found, common(ink, area));
        widen(ink, common(area, place));
    });
}

} // namespace sv
