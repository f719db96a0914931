#include "selvane/display/Quads.h"

#include "selvane/platform/openGl.h"

#include <SFML/Graphics/RenderStates.hpp>
#include <SFML/Graphics/RenderTarget.hpp>
#include <SFML/Window/Context.hpp>
#include <algorithm>
#include <limits>

namespace sv {

namespace {

constexpr unsigned char opaque = std::numeric_limits<unsigned char>::max();

/// Without a graphics card, many small draws take two thirds of the time of a large one.
constexpr std::size_t vertices_per_draw = 80;

/// From SFML, which has it loaded. Null if it does not find it.
platform::DrawArrays findDrawArrays() {
    return reinterpret_cast<platform::DrawArrays>(sf::Context::getFunction("glDrawArrays"));
}

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

/// SFML prepares OpenGL anew for each of its draws, which takes longer than such a small draw. It
/// leaves everything as it is, so the others need only the last of its calls.
void Quads::drawTo(sf::RenderTarget &target, const sf::RenderStates &states) {
    static const platform::DrawArrays draw_arrays = findDrawArrays();
    for (std::size_t i = 0; i < used; i += vertices_per_draw) {
        const std::size_t count = std::min(vertices_per_draw, used - i);
        if (i > 0 && draw_arrays)
            draw_arrays(platform::draw_quads, static_cast<int>(i), static_cast<int>(count));
        else
            target.draw(&vertices[i], count, sf::Quads, states);
    }
    used = 0;
}

} // namespace sv
