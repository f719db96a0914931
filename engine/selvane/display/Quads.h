/// Quads that SFML draws together, in memory that neither grows nor moves.
#pragma once

#include "selvane/core/Color.h"
#include "selvane/core/Vector.h"
#include "selvane/display/InkMap.h"

#include <cstddef>
#include <vector>

namespace sf {
class RenderStates;
class RenderTarget;
class Vertex;
} // namespace sf

namespace sv {

class Quads {
  public:
    Quads();
    ~Quads();
    Quads(const Quads &) = delete;
    Quads &operator=(const Quads &) = delete;

    bool isEmpty() const { return used == 0; }
    bool hasRoom(std::size_t quads) const { return used + quads * per_quad <= most; }

    // REQUIRES for the next two: there is room.

    /// Both in pixels, of the target and of the texture.
    void add(const PixelArea &place, const PixelArea &texture, Rgb color);

    /// One corner; each four in a row are a quad.
    void addCorner(Vector place, Vector texture, Rgb color, unsigned char opacity);

    /// Whether the last quad could be made to go on to the right, over that area. REQUIRES: quads
    /// of one colour each.
    bool widenLast(const PixelArea &area, Rgb color);

    /// Draws the quads and forgets them.
    void drawTo(sf::RenderTarget &target, const sf::RenderStates &states);

  private:
    static constexpr std::size_t per_quad = 4;
    static constexpr std::size_t most = 12288; // A full screen with some box drawing.

    std::vector<sf::Vertex> vertices;
    std::size_t used = 0; // Of the vertices.
};

} // namespace sv
