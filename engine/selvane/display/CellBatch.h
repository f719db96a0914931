/// Collects what is drawn for a frame, character cells and figures, and gives it to SFML at its
/// end, unless the window shows just that already. A cell's rectangle has the colour of the
/// window's background, so it is drawn only where it covers something: without a graphics card each
/// pixel counts.
///
/// Borrows the target, and the objects that define what a cell looks like: the rectangle's size
/// and colour, the text's font, style and character size, the font for what that one lacks.
/// Game-loop thread only.
#pragma once

#include "selvane/core/Color.h"
#include "selvane/core/Vector.h"
#include "selvane/display/Glyphs.h"
#include "selvane/display/InkMap.h"
#include "selvane/display/boxDrawing.h"

#include <memory>
#include <vector>

namespace sf {
class CircleShape;
class Color;
class Font;
class RectangleShape;
class RenderStates;
class RenderTarget;
class Shader;
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

    /// A rectangle and over it a character, each with its upper left corner at that pixel, as the
    /// rectangle and the text would be drawn there.
    struct Cell {
        Vector rectangle_pos;
        Vector text_pos;
        char32_t ch = U' ';
        Rgb color;
        bool has_background = false; // Instead of the rectangle's own colour.
        Rgb background;

        friend bool operator==(const Cell &, const Cell &) = default;
    };

    void add(const Cell &cell);

    /// Adds a figure over what was added before.
    void add(const sf::CircleShape &figure);

    /// What a byte stands for.
    char32_t ofByte(char byte) { return glyphs.ofByte(byte); }

    /// Draws what was added and forgets it. More may be drawn into the window now.
    void flush();

    /// From now on anything may be drawn at any time.
    void noteDrawingAnywhere();

    /// Ends the frame. True if the window is to be shown and then cleared; false if it would show
    /// what it does already, and nothing was drawn. `is_due`: draw it even then.
    bool endFrame(bool is_due);

  private:
    struct Figure;
    struct DrawList;

    void drawFrame();
    void drawFigure(const Figure &figure);
    void addCell(const Cell &cell);
    void addRectangle(const Cell &cell);
    bool widenLast(const PixelArea &cell, const sf::Color &background);
    void addBox(const Cell &cell);
    void makeRoom(std::size_t quads);
    static void addQuad(std::vector<sf::Vertex> &to, const PixelArea &place,
                        const PixelArea &texture, const sf::Color &color);
    void drawQuads();
    void bindShader(const sf::Shader *bound);
    void draw(std::vector<sf::Vertex> &quads, const sf::RenderStates &states);

    sf::RenderTarget &target;
    const sf::RectangleShape &rectangle;
    bool is_utf8;
    std::unique_ptr<sf::Shader> shader; // Of the vertices; null where there are no shaders.
    Glyphs glyphs;
    InkMap ink;
    float light_line;               // Of box drawing.
    std::vector<BoxPiece> pieces;   // Of one character of it.
    std::vector<PixelArea> covered; // Of one cell, by its rectangle.
    bool is_drawn_anywhere = false;
    bool is_partly_drawn = false; // Of this frame.
    bool is_shown_known = false;
    std::unique_ptr<sf::CircleShape> polygon; // What figures are drawn with, one after the other.
    std::unique_ptr<DrawList> frame;
    std::unique_ptr<DrawList> shown; // The last one that the window was given, if that is known.
    bool is_fallback = false;        // Which font the vertices are of.
    // Four for each quad; neither grows.
    std::vector<sf::Vertex> vertices;
    std::vector<sf::Vertex> backgrounds; // Of a colour of their own: drawn before the vertices.
};

} // namespace sv
