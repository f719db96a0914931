#include "selvane/display/CellBatch.h"

#include "selvane/core/Config.h"
#include "selvane/display/SfmlMessages.h"
#include "selvane/display/fontSize.h"

#include <SFML/Graphics/CircleShape.hpp>
#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/RenderTarget.hpp>
#include <SFML/Graphics/Shader.hpp>
#include <SFML/Graphics/Text.hpp>
#include <SFML/Graphics/View.hpp>
#include <algorithm>
#include <cmath>
#include <utility>

namespace sv {

namespace {

/// Four full screens of the usual size. A frame with more is drawn in several pieces.
constexpr std::size_t most_cells = 8192;
constexpr std::size_t most_figures = 1024;

/// Pixels. Cells may be far smaller than a pixel, and the ink of each would take memory.
constexpr float least_piece = 8;

/// SFML begins every font texture with a white square, for underlines. This is its middle: a quad
/// that shows nothing else has the colour of its vertices.
constexpr PixelArea white_texel{1, 1, 1, 1};

/// All texels that characters show are white and differ only in their opacity. Without a graphics
/// card this takes a sixth less time than SFML's own way, which multiplies all four components.
constexpr char vertex_color_shader[] = R"(
    uniform sampler2D font;
    void main() {
        float opacity = texture2D(font, gl_TexCoord[0].xy).a;
        gl_FragColor = vec4(gl_Color.rgb, gl_Color.a * opacity);
    }
)";

/// Null where there are no shaders: the picture is the same, but takes longer.
std::unique_ptr<sf::Shader> makeShader() {
    if (!sf::Shader::isAvailable())
        return nullptr;
    auto shader = std::make_unique<sf::Shader>();
    SfmlMessages ignored;
    const bool is_usable = shader->loadFromMemory(vertex_color_shader, sf::Shader::Fragment);
    ignored.take();
    return is_usable ? std::move(shader) : nullptr;
}

PixelArea moved(const PixelArea &area, Vector by) {
    return {area.left + by.x, area.top + by.y, area.right + by.x, area.bottom + by.y};
}

/// The characters for which sf::Text moves on without drawing anything.
bool isBlank(char32_t ch) {
    return ch == U' ' || ch == U'\t' || ch == U'\n' || ch == U'\r';
}

/// The nearest edge of pixels, always the same one of two, however the number was rounded.
float onPixels(float edge) {
    constexpr float nearly_half = 0.5F + 1.0F / 128;
    return std::ceil(edge - nearly_half);
}

/// Whether the target's pixels are those of its view: the window of a full screen may be larger.
bool showsOwnPixels(const sf::RenderTarget &target) {
    const sf::Vector2f size(target.getSize());
    const sf::View own({0, 0, size.x, size.y});
    return target.getView().getTransform() == own.getTransform() &&
           target.getView().getViewport() == own.getViewport();
}

/// Whether the centre of a pixel is between two edges, or may get there by rounding: renderers
/// place vertices on sixteenths of a pixel or finer.
bool mayHoldCentre(float from, float to) {
    constexpr float margin = 1.0F / 16;
    return to - from >= 1 || std::ceil(from - margin - 0.5F) + 0.5F <= to + margin;
}

/// Whether a quad of that area may have a pixel: SFML spends as much on one that has none.
bool mayShow(const PixelArea &area) {
    return mayHoldCentre(area.left, area.right) && mayHoldCentre(area.top, area.bottom);
}

PixelArea onPixels(const PixelArea &area) {
    return {onPixels(area.left), onPixels(area.top), onPixels(area.right), onPixels(area.bottom)};
}

/// Whether a character reaches out of its cell only to the right, into the next cell of the list,
/// which will cover that. To cut it there moves the corners between which renderers interpolate, so
/// the rest may be a level off. That does not add up: below it is the cell's own rectangle.
bool isCutByNext(const PixelArea &ink, const PixelArea &area, const PixelArea &next) {
    constexpr float little = 1.0F / 64;
    const bool is_neighbour = next.top == area.top && std::abs(next.left - area.right) < little;
    return is_neighbour && area.left <= ink.left && ink.left < next.left && next.left < ink.right &&
           ink.right <= next.right && area.top <= ink.top && ink.bottom <= area.bottom;
}

/// How far a cell's rectangle is from where its character is.
Vector rectangleOffset(sf::Vector2f size) {
    return {-size.x / RECTANGLE_LEFT, size.y / RECTANGLE_DOWN};
}

Rgb fromSfml(const sf::Color &color) {
    return {color.r, color.g, color.b};
}

Vector vectorOf(sf::Vector2f v) {
    return {v.x, v.y};
}

/// The edges of the rectangles of cells in a row or column, as far as the window goes.
std::vector<float> edgesOf(float first, float size, float window, bool is_on_pixels) {
    const float step = std::max(size, least_piece);
    const auto count = static_cast<int>(std::ceil((window - first) / step));
    std::vector<float> edges;
    for (int i = 0; i <= count; ++i) {
        const float edge = first + static_cast<float>(i) * step;
        edges.push_back(is_on_pixels ? onPixels(edge) : edge);
    }
    return edges;
}

InkMap inkOf(const sf::RenderTarget &target, const sf::RectangleShape &rectangle,
             bool is_on_pixels) {
    const sf::Vector2f window = target.getView().getSize();
    const sf::Vector2f size = rectangle.getSize();
    const Vector first = rectangleOffset(size);
    return {edgesOf(first.x, size.x, window.x, is_on_pixels),
            edgesOf(first.y - size.y, size.y, window.y, is_on_pixels)};
}

} // namespace

struct CellBatch::Figure {
    std::size_t cells_before = 0;
    std::size_t corners = 0;
    float radius = 0;
    float rotation = 0;
    sf::Vector2f position;
    sf::Color color;

    friend bool operator==(const Figure &, const Figure &) = default;
};

/// Cells, and figures between them.
struct CellBatch::DrawList {
    friend bool operator==(const DrawList &, const DrawList &) = default;

    DrawList() {
        cells.reserve(most_cells);
        figures.reserve(most_figures);
    }

    void clear() {
        cells.clear();
        figures.clear();
    }

    // Neither grows.
    std::vector<Cell> cells;
    std::vector<Figure> figures;
};

CellBatch::CellBatch(sf::RenderTarget &new_target, const sf::RectangleShape &new_rectangle,
                     const sf::Text &new_text, const sf::Font *fallback)
    : target(new_target), rectangle(new_rectangle), is_utf8(Config::getInstance().getUtf8()),
      shader(makeShader()), glyphs(new_text, fallback, rectangle.getSize().x),
      ink(inkOf(target, rectangle, is_utf8)), light_line(lightLine(vectorOf(rectangle.getSize()))),
      polygon(std::make_unique<sf::CircleShape>()), frame(std::make_unique<DrawList>()),
      shown(std::make_unique<DrawList>()) {}

CellBatch::~CellBatch() = default;

CellBatch::Cell &CellBatch::addCell() {
    if (frame->cells.size() == most_cells)
        flush();
    return frame->cells.emplace_back();
}

void CellBatch::add(const sf::CircleShape &figure) {
    if (frame->figures.size() == most_figures)
        flush();
    frame->figures.push_back({frame->cells.size(), figure.getPointCount(), figure.getRadius(),
                              figure.getRotation(), figure.getPosition(), figure.getFillColor()});
}

void CellBatch::noteDrawingAnywhere() {
    is_drawn_anywhere = true;
    ink.fill();
}

void CellBatch::flush() {
    drawFrame();
    frame->clear();
    is_partly_drawn = true;
}

bool CellBatch::endFrame(bool is_due) {
    const bool is_whole = !std::exchange(is_partly_drawn, false) && !is_drawn_anywhere;
    const bool is_same = is_whole && is_shown_known && *frame == *shown;
    if (!is_same || is_due)
        drawFrame();
    std::swap(frame, shown);
    frame->clear();
    is_shown_known = is_whole;
    if (!is_drawn_anywhere)
        ink.clear();
    return !is_same || is_due;
}

void CellBatch::drawFrame() {
    has_own_pixels = showsOwnPixels(target);
    std::size_t drawn = 0;
    PixelArea area = areaOf(0);
    const auto draw_cells = [&](std::size_t end) {
        for (; drawn < end; ++drawn) {
            const PixelArea next_area = areaOf(drawn + 1);
            drawCell(frame->cells[drawn], area, next_area);
            area = next_area;
        }
        drawQuads();
    };
    for (const Figure &figure : frame->figures) {
        draw_cells(figure.cells_before);
        drawFigure(figure);
    }
    draw_cells(frame->cells.size());
}

void CellBatch::drawFigure(const Figure &figure) {
    polygon->setPointCount(figure.corners);
    polygon->setRadius(figure.radius);
    polygon->setRotation(figure.rotation);
    polygon->setPosition(figure.position);
    polygon->setFillColor(figure.color);
    const sf::FloatRect area = polygon->getGlobalBounds();
    ink.add({area.left, area.top, area.left + area.width, area.top + area.height});
    target.draw(*polygon);
}

/// Of the rectangle. Empty for the number after the last cell.
PixelArea CellBatch::areaOf(std::size_t number) const {
    if (number == frame->cells.size())
        return {};
    const sf::Vector2f size = rectangle.getSize();
    const Vector pos = frame->cells[number].rectangle_pos;
    const PixelArea area{pos.x, pos.y, pos.x + size.x, pos.y + size.y};
    // So that it takes nothing from the lines in neighbouring cells.
    return is_utf8 ? onPixels(area) : area;
}

/// Leaves out the part of the character that the next cell would have to cover.
void CellBatch::drawCell(const Cell &cell, const PixelArea &area, const PixelArea &next_area) {
    addRectangle(cell, area);
    if (isBlank(cell.ch))
        return;
    if (is_utf8 && isBoxDrawing(cell.ch))
        return addBox(cell);
    const Glyphs::Glyph &glyph = glyphs.of(cell.ch);
    if (glyph.is_fallback != is_fallback) {
        drawQuads();
        is_fallback = glyph.is_fallback;
    }
    PixelArea visible = moved(glyph.ink, cell.text_pos);
    PixelArea place = moved(glyph.place, cell.text_pos);
    PixelArea texture = glyph.texture;
    if (isCutByNext(visible, area, next_area)) {
        const float scale = (texture.right - texture.left) / (place.right - place.left);
        texture.right = texture.left + (next_area.left - place.left) * scale;
        place.right = next_area.left;
        visible.right = next_area.left;
    }
    ink.add(visible);
    makeRoom(1);
    characters.add(place, texture, cell.color);
}

/// For that many quads, and a background.
void CellBatch::makeRoom(std::size_t quads) {
    if (!characters.hasRoom(quads) || !backgrounds.hasRoom(1))
        drawQuads();
}

void CellBatch::addRectangle(const Cell &cell, const PixelArea &area) {
    const Rgb color = cell.has_background ? cell.background : fromSfml(rectangle.getFillColor());
    covered.clear();
    if (cell.has_background)
        ink.findInkAndAdd(area, covered);
    else
        ink.findInk(area, covered);
    makeRoom(covered.size());
    for (const PixelArea &part : covered)
        if (!has_own_pixels || mayShow(part))
            characters.add(part, white_texel, color);
    if (cell.has_background && !backgrounds.widenLast(area, color))
        backgrounds.add(area, white_texel, color);
}

void CellBatch::addBox(const Cell &cell) {
    const sf::Vector2f size = rectangle.getSize();
    const Vector corner = cell.text_pos + rectangleOffset(size);
    const PixelArea place = onPixels({corner.x, corner.y, corner.x + size.x, corner.y + size.y});
    pieces.clear();
    addBoxDrawing(pieces, cell.ch, place, light_line);
    const float over = isDiagonal(cell.ch) ? light_line : 0;
    ink.add({place.left - over, place.top - over, place.right + over, place.bottom + over});
    makeRoom(pieces.size());
    for (const BoxPiece &piece : pieces)
        for (std::size_t i = 0; i < piece.corners.size(); ++i) {
            const auto opacity = static_cast<unsigned char>(std::lround(255 * piece.opacity[i]));
            characters.addCorner(piece.corners[i], {white_texel.left, white_texel.top}, cell.color,
                                 opacity);
        }
}

/// The backgrounds first, without a texture and opaque, which without a graphics card takes a tenth
/// of the time. What was drawn before one of them in its cell is covered by a quad among the
/// others.
void CellBatch::drawQuads() {
    if (!backgrounds.isEmpty()) {
        bindShader(nullptr); // A game may have left one of its own.
        backgrounds.drawTo(target, sf::BlendNone);
    }
    if (characters.isEmpty())
        return;
    bindShader(shader.get());
    // Not before: the texture grows with new glyphs, and is then another one.
    characters.drawTo(target, &glyphs.texture(is_fallback));
    bindShader(nullptr);
}

/// For all draws that follow: as a part of their state it would be bound and let go for each. SFML
/// complains of every call, even without a shader, where there are none.
void CellBatch::bindShader(const sf::Shader *bound) {
    if (!shader)
        return;
    target.setActive();
    sf::Shader::bind(bound);
}

} // namespace sv
