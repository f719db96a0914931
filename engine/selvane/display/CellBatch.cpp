#include "selvane/display/CellBatch.h"

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/RenderTarget.hpp>
#include <SFML/Graphics/Text.hpp>

namespace sv {

namespace {

/// Two full screens of the usual size. A frame with more is drawn in several pieces.
constexpr std::size_t most_cells = 4096;
constexpr std::size_t vertices_per_cell = 8;

/// SFML draws a glyph with this much of its surroundings, so that its edge can fade out between two
/// pixels.
constexpr float glyph_padding = 1;

/// Position and texture, each from the upper left corner to the lower right one.
void addQuad(std::vector<sf::Vertex> &vertices, const sf::FloatRect &place,
             const sf::FloatRect &texture, const sf::Color &color) {
    const float right = place.left + place.width;
    const float bottom = place.top + place.height;
    const float texture_right = texture.left + texture.width;
    const float texture_bottom = texture.top + texture.height;
    vertices.emplace_back(sf::Vector2f(place.left, place.top), color,
                          sf::Vector2f(texture.left, texture.top));
    vertices.emplace_back(sf::Vector2f(right, place.top), color,
                          sf::Vector2f(texture_right, texture.top));
    vertices.emplace_back(sf::Vector2f(right, bottom), color,
                          sf::Vector2f(texture_right, texture_bottom));
    vertices.emplace_back(sf::Vector2f(place.left, bottom), color,
                          sf::Vector2f(texture.left, texture_bottom));
}

sf::FloatRect padded(const sf::FloatRect &rect) {
    return {rect.left - glyph_padding, rect.top - glyph_padding, rect.width + 2 * glyph_padding,
            rect.height + 2 * glyph_padding};
}

/// The characters for which sf::Text moves on without drawing anything.
bool isBlank(char ch) {
    return ch == ' ' || ch == '\t' || ch == '\n' || ch == '\r';
}

} // namespace

CellBatch::CellBatch(sf::RenderTarget &new_target, const sf::RectangleShape &new_rectangle,
                     const sf::Text &new_text)
    : target(new_target), rectangle(new_rectangle), text(new_text) {
    vertices.reserve(most_cells * vertices_per_cell);
}

CellBatch::~CellBatch() = default;

void CellBatch::add(Vector rectangle_pos, Vector text_pos, char ch, const sf::Color &color) {
    if (vertices.size() + vertices_per_cell > vertices.capacity())
        flush();
    // SFML begins every font texture with a white square, for underlines. This is its middle: a
    // quad that shows nothing else has the colour of its vertices.
    const sf::FloatRect white_texel(1, 1, 0, 0);
    const sf::Vector2f size = rectangle.getSize();
    addQuad(vertices, {rectangle_pos.x, rectangle_pos.y, size.x, size.y}, white_texel,
            rectangle.getFillColor());
    if (!isBlank(ch))
        addCharacter(text_pos, ch, color);
}

void CellBatch::addCharacter(Vector pos, char ch, const sf::Color &color) {
    const unsigned size = text.getCharacterSize();
    const bool bold = (text.getStyle() & sf::Text::Bold) != 0;
    // Convert as sf::Text does, so each byte selects the same glyph.
    const sf::Uint32 code_point = sf::String(ch)[0];
    const sf::Glyph &glyph = text.getFont()->getGlyph(code_point, size, bold);
    sf::FloatRect place = padded(glyph.bounds);
    place.left += pos.x;
    // A glyph is placed from its baseline, which lies a character size below the text's top.
    place.top += pos.y + static_cast<float>(size);
    addQuad(vertices, place, padded(sf::FloatRect(glyph.textureRect)), color);
}

void CellBatch::flush() {
    if (vertices.empty())
        return;
    // Not before: the texture grows with new glyphs, and is then another one.
    sf::RenderStates states(&text.getFont()->getTexture(text.getCharacterSize()));
    target.draw(vertices.data(), vertices.size(), sf::Quads, states);
    vertices.clear();
}

} // namespace sv
