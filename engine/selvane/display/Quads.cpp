#include "selvane/display/Quads.h"

#include <SFML/Graphics/RenderStates.hpp>
#include <SFML/Graphics/RenderTarget.hpp>
#include <algorithm>
#include <limits>

namespace sv {

namespace {

constexpr unsigned char opaque = std::numeric_limits<unsigned char>::max();

/// Without a graphics card, many small draws take two thirds of the time of a large one.
constexpr std::size_t vertices_per_draw = 80;

} // namespace

Quads::Quads() : vertices(most) {}

Quads::~Quads() = default;

void Quads::add(const PixelArea &place, const PixelArea &texture, Rgb color) {
    addCorner({place.left, place.top}, {texture.left, texture.top}, color, opaque);
    addCorner({place.right, place.top}, {texture.right, texture.top}, color, opaque);
    addCorner({place.right, place.bottom}, {texture.right, texture.bottom}, color, opaque);
    addCorner({place.left, place.bottom}, {texture.left, texture.bottom}, color, opaque);
}

/// Number by number: SFML's constructors are calls into its library, and a processor waits when it
/// copies at once what was just written in parts.
void Quads::addCorner(Vector place, Vector texture, Rgb color, unsigned char opacity) {
    sf::Vertex &corner = vertices[used++];
    corner.position.x = place.x;
    corner.position.y = place.y;
    corner.color.r = color.r;
    corner.color.g = color.g;
    corner.color.b = color.b;
    corner.color.a = opacity;
    corner.texCoords.x = texture.x;
    corner.texCoords.y = texture.y;
}

bool Quads::widenLast(const PixelArea &area, Rgb color) {
    if (isEmpty())
        return false;
    sf::Vertex *last = &vertices[used - per_quad];
    sf::Vertex &upper_right = last[1];
    sf::Vertex &lower_right = last[2];
    if (upper_right.position != sf::Vector2f(area.left, area.top) ||
        lower_right.position != sf::Vector2f(area.left, area.bottom) ||
        upper_right.color != sf::Color(color.r, color.g, color.b))
        return false;
    upper_right.position.x = area.right;
    lower_right.position.x = area.right;
    return true;
}

void Quads::drawTo(sf::RenderTarget &target, const sf::RenderStates &states) {
    for (std::size_t i = 0; i < used; i += vertices_per_draw)
        target.draw(&vertices[i], std::min(vertices_per_draw, used - i), sf::Quads, states);
    used = 0;
}

} // namespace sv
