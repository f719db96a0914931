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
#include "selvane/display/Quads.h"
#include "selvane/display/boxDrawing.h"

#include <memory>
#include <vector>

namespace sf {
class CircleShape;
class Font;
class RectangleShape;
class RenderTarget;
class Shader;
class Text;
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

    /// The new cell, valid until the next call. To be filled in number by number: a processor waits
    /// when it copies what was just written in parts.
    Cell &addCell();

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
    PixelArea areaOf(std::size_t number) const;
    void drawCell(const Cell &cell, const PixelArea &area, const PixelArea &next_area);
    void addRectangle(const Cell &cell, const PixelArea &area);
    void addBox(const Cell &cell);
    void makeRoom(std::size_t quads);
    void drawQuads();
    void bindShader(const sf::Shader *bound);

    sf::RenderTarget &target;
    const sf::RectangleShape &rectangle;
    bool is_utf8;
    std::unique_ptr<sf::Shader> shader; // Of the characters; null where there are no shaders.
    Glyphs glyphs;
    InkMap ink;
    float light_line;               // Of box drawing.
    std::vector<BoxPiece> pieces;   // Of one character of it.
    std::vector<PixelArea> covered; // Of one cell, by its rectangle.
    bool is_drawn_anywhere = false;
    bool is_partly_drawn = false; // Of this frame.
    bool has_own_pixels = false;  // In the frame that is being drawn: the view is not stretched.
    bool is_shown_known = false;
    std::unique_ptr<sf::CircleShape> polygon; // What figures are drawn with, one after the other.
    std::unique_ptr<DrawList> frame;
    std::unique_ptr<DrawList> shown; // The last one that the window was given, if that is known.
    bool is_fallback = false;        // Which font the characters are of.
    Quads characters;                // And what is drawn between them.
    Quads backgrounds;               // Of a colour of their own: drawn before the characters.
};

} // namespace sv
