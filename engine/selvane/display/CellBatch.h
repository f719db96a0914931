/// Collects the character cells drawn since the last flush, in the order of drawing, and gives them
/// to SFML in one call. A cell's rectangle has the colour of the window's background, so it is
/// drawn only where it covers something: without a graphics card each pixel counts.
///
/// Borrows the target, and the objects that define what a cell looks like: the rectangle's size
/// and colour, the text's font, style and character size, the font for what that one lacks.
/// Game-loop thread only.
#pragma once

#include "selvane/core/Vector.h"
#include "selvane/display/Glyphs.h"
#include "selvane/display/InkMap.h"
#include "selvane/display/boxDrawing.h"

#include <vector>

namespace sf {
class Color;
class Font;
class RectangleShape;
class RenderStates;
class RenderTarget;
class Text;
class Vertex;
} // namespace sf

namespace sv {

class CellBatch {
  public:
    /// REQUIRES: the text has a font; all outlive the batch. Pixels of the target's view.
    /// `fallback`: null for none.
    CellBatch(sf::RenderTarget &new_target, const sf::RectangleShape &new_rectangle,
              const sf::Text &new_text, const sf::Font *fallback);
    ~CellBatch();
    CellBatch(const CellBatch &) = delete;
    CellBatch &operator=(const CellBatch &) = delete;

    /// Adds a rectangle and over it a character, each with its upper left corner at that pixel, as
    /// the rectangle and the text would be drawn there. `background`: null for the rectangle's own
    /// colour.
    void add(Vector rectangle_pos, Vector text_pos, char32_t ch, const sf::Color &color,
             const sf::Color *background);

    /// What a byte stands for.
    char32_t ofByte(char byte) { return glyphs.ofByte(byte); }

    /// Draws what was added and forgets it.
    void flush();

    /// What else is drawn, and where.
    void noteDrawing(const PixelArea &area) { ink.add(area); }

    /// From now on anything may be drawn at any time.
    void noteDrawingAnywhere();

    /// The window was cleared to its background.
    void noteCleared();

  private:
    void makeRoom(std::size_t quads);
    void addRectangle(Vector pos, const sf::Color *background);
    bool widenLast(const PixelArea &cell, const sf::Color &background);
    void addBox(Vector text_pos, char32_t ch, const sf::Color &color);
    static void addQuad(std::vector<sf::Vertex> &to, const PixelArea &place,
                        const PixelArea &texture, const sf::Color &color);
    void draw(std::vector<sf::Vertex> &quads, std::size_t at_once, const sf::RenderStates &states);

    sf::RenderTarget &target;
    const sf::RectangleShape &rectangle;
    bool is_utf8;
    Glyphs glyphs;
    InkMap ink;
    float light_line;               // Of box drawing.
    std::vector<BoxPiece> pieces;   // Of one character of it.
    std::vector<PixelArea> covered; // Of one cell, by its rectangle.
    bool is_drawn_anywhere = false;
    bool is_fallback = false; // Which font the vertices are of.
    // Four for each quad; neither grows.
    std::vector<sf::Vertex> vertices;
    std::vector<sf::Vertex> backgrounds; // Of a colour of their own: drawn before the vertices.
};

} // namespace sv
