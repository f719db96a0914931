#include "selvane/display/CellBatch.h"

#include "selvane/core/Config.h"
#include "selvane/display/fontSize.h"

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/RenderTarget.hpp>
#include <SFML/Graphics/Text.hpp>
#include <algorithm>
#include <cmath>

namespace sv {

namespace {

/// Two full screens of the usual size. A frame with more is drawn in several pieces.
constexpr std::size_t most_cells = 4096;
constexpr std::size_t vertices_per_cell = 8;

/// Without a graphics card, many small draws take two thirds of the time of a large one.
constexpr std::size_t vertices_per_draw = 160;

/// Pixels. Cells may be far smaller than a pixel, and the ink of each would take memory.
constexpr float least_piece = 8;

/// SFML begins every font texture with a white square, for underlines. This is its middle: a quad
/// that shows nothing else has the colour of its vertices.
constexpr PixelArea white_texel{1, 1, 1, 1};

PixelArea moved(const PixelArea &area, Vector by) {
    return {area.left + by.x, area.top + by.y, area.right + by.x, area.bottom + by.y};
}

/// The characters for which sf::Text moves on without drawing anything.
bool isBlank(char32_t ch) {
    return ch == U' ' || ch == U'\t' || ch == U'\n' || ch == U'\r';
}

/// The pixels whose middles are in the area. Neighbours share their edges, however those were
/// rounded.
PixelArea onPixels(const PixelArea &area) {
    constexpr float nearly_half = 0.5F + 1.0F / 128;
    const auto edge = [](float pixel) { return std::ceil(pixel - nearly_half); };
    return {edge(area.left), edge(area.top), edge(area.right), edge(area.bottom)};
}

/// How far a cell's rectangle is from where its character is.
Vector rectangleOffset(sf::Vector2f size) {
    return {-size.x / RECTANGLE_LEFT, size.y / RECTANGLE_DOWN};
}

Vector vectorOf(sf::Vector2f v) {
    return {v.x, v.y};
}

} // namespace

CellBatch::CellBatch(sf::RenderTarget &new_target, const sf::RectangleShape &new_rectangle,
                     const sf::Text &new_text, const sf::Font *fallback)
    : target(new_target), rectangle(new_rectangle),
      glyphs(new_text, fallback, rectangle.getSize().x),
      ink(vectorOf(new_target.getView().getSize()),
          rectangleOffset(rectangle.getSize()) - vectorOf({0, rectangle.getSize().y}),
          {std::max(rectangle.getSize().x, least_piece),
           std::max(rectangle.getSize().y, least_piece)}),
      is_utf8(Config::getInstance().getUtf8()),
      light_line(lightLine(vectorOf(rectangle.getSize()))) {
    vertices.reserve(most_cells * vertices_per_cell);
}

CellBatch::~CellBatch() = default;

void CellBatch::add(Vector rectangle_pos, Vector text_pos, char32_t ch, const sf::Color &color,
                    const sf::Color *background) {
    if (vertices.size() + vertices_per_cell > vertices.capacity())
        flush();
    addRectangle(rectangle_pos, background);
    if (isBlank(ch))
        return;
    if (is_utf8 && isBoxDrawing(ch))
        return addBox(text_pos, ch, color);
    const Glyphs::Glyph &glyph = glyphs.of(ch);
    if (glyph.is_fallback != is_fallback) {
        flush();
        is_fallback = glyph.is_fallback;
    }
    const PixelArea place = moved(glyph.place, text_pos);
    ink.add(place);
    addQuad(place, glyph.texture, color);
}

void CellBatch::addRectangle(Vector pos, const sf::Color *background) {
    const sf::Vector2f size = rectangle.getSize();
    PixelArea covered{pos.x, pos.y, pos.x + size.x, pos.y + size.y};
    if (is_utf8) // So that it takes nothing from the lines in neighbouring cells.
        covered = onPixels(covered);
    if (background)
        ink.add(covered);
    else
        covered = ink.inkIn(covered);
    if (!covered.isEmpty())
        addQuad(covered, white_texel, background ? *background : rectangle.getFillColor());
}

void CellBatch::addBox(Vector text_pos, char32_t ch, const sf::Color &color) {
    const sf::Vector2f size = rectangle.getSize();
    const Vector corner = text_pos + rectangleOffset(size);
    const PixelArea cell = onPixels({corner.x, corner.y, corner.x + size.x, corner.y + size.y});
    pieces.clear();
    addBoxDrawing(pieces, ch, cell, light_line);
    ink.add({cell.left - light_line, cell.top - light_line, cell.right + light_line,
             cell.bottom + light_line}); // Diagonals reach out of their cells.
    if (vertices.size() + 4 * pieces.size() > vertices.capacity())
        flush();
    for (const BoxPiece &piece : pieces)
        for (std::size_t i = 0; i < piece.corners.size(); ++i) {
            const Vector at = piece.corners[i];
            sf::Color faded = color;
            faded.a = static_cast<sf::Uint8>(std::lround(255 * piece.opacity[i]));
            vertices.emplace_back(sf::Vector2f(at.x, at.y), faded,
                                  sf::Vector2f(white_texel.left, white_texel.top));
        }
}

void CellBatch::addQuad(const PixelArea &place, const PixelArea &texture, const sf::Color &color) {
    const auto corner = [&](float x, float y, float texture_x, float texture_y) {
        vertices.emplace_back(sf::Vector2f(x, y), color, sf::Vector2f(texture_x, texture_y));
    };
    corner(place.left, place.top, texture.left, texture.top);
    corner(place.right, place.top, texture.right, texture.top);
    corner(place.right, place.bottom, texture.right, texture.bottom);
    corner(place.left, place.bottom, texture.left, texture.bottom);
}

void CellBatch::noteDrawingAnywhere() {
    is_drawn_anywhere = true;
    ink.fill();
}

void CellBatch::noteCleared() {
    if (!is_drawn_anywhere)
        ink.clear();
}

void CellBatch::flush() {
    if (vertices.empty())
        return;
    // Not before: the texture grows with new glyphs, and is then another one.
    sf::RenderStates states(&glyphs.texture(is_fallback));
    for (std::size_t i = 0; i < vertices.size(); i += vertices_per_draw)
        target.draw(&vertices[i], std::min(vertices_per_draw, vertices.size() - i), sf::Quads,
                    states);
    vertices.clear();
}

} // namespace sv
