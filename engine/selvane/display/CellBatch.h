/// Collects the character cells drawn since the last flush, in the order of drawing, and gives them
/// to SFML in one call. A cell's rectangle has the colour of the window's background, so it is
/// drawn only where it covers something: without a graphics card each pixel counts.
///
/// Borrows the target, and the two objects that define what a cell looks like: the rectangle's size
/// and colour, the text's font, style and character size. Game-loop thread only.
#pragma once

#include "selvane/core/Vector.h"
#include "selvane/display/InkMap.h"

#include <array>
#include <vector>

namespace sf {
class Color;
class RectangleShape;
class RenderTarget;
class Text;
class Vertex;
} // namespace sf

namespace sv {

class CellBatch {
  public:
    /// REQUIRES: the text has a font; all three outlive the batch. Pixels of the target's view.
    CellBatch(sf::RenderTarget &new_target, const sf::RectangleShape &new_rectangle,
              const sf::Text &new_text);
    ~CellBatch();
    CellBatch(const CellBatch &) = delete;
    CellBatch &operator=(const CellBatch &) = delete;

    /// Adds a rectangle and over it a character, each with its upper left corner at that pixel, as
    /// the rectangle and the text would be drawn there.
    void add(Vector rectangle_pos, Vector text_pos, char ch, const sf::Color &color);

    /// Draws what was added and forgets it.
    void flush();

    /// What else is drawn, and where.
    void noteDrawing(const PixelArea &area) { ink.add(area); }

    /// From now on anything may be drawn at any time.
    void noteDrawingAnywhere();

    /// The window was cleared to its background.
    void noteCleared();

  private:
    struct Glyph {
        PixelArea place; // From the character's position.
        PixelArea texture;
        bool is_known = false;
    };

    const Glyph &glyphOf(char ch);
    void addQuad(const PixelArea &place, const PixelArea &texture, const sf::Color &color);

    sf::RenderTarget &target;
    const sf::RectangleShape &rectangle;
    const sf::Text &text;
    InkMap ink;
    bool is_drawn_anywhere = false;
    std::array<Glyph, 256> glyphs;
    std::vector<sf::Vertex> vertices; // Four for each quad; never grows.
};

} // namespace sv
