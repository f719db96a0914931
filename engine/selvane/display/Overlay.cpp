#include "selvane/display/Overlay.h"

#include "selvane/display/DisplayManager.h"
#include "selvane/display/sfmlColor.h"

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Graphics/Texture.hpp>
#include <SFML/Graphics/Vertex.hpp>
#include <algorithm>
#include <cmath>

namespace sv {

namespace {

constexpr float half_line = 0.5F; // Pixels.
constexpr float text_margin = 2;
constexpr float line_height = 1.25F; // In units of the text's size.
const sf::Color ground(0, 0, 0, 208);

/// The middle of the white square with which SFML begins every font texture.
const sf::Vector2f white_texel(1, 1);

DisplayManager &display() {
    return DisplayManager::getInstance();
}

/// Pixels; legible also where the window is small.
unsigned sizeOfText(bool is_large) {
    const int small = std::clamp(display().getVerticalPixels() / 48, 11, 15);
    return static_cast<unsigned>(is_large ? small * 4 / 3 : small);
}

/// The middle of the pixel that it is in: lines that run along pixels are then exactly one wide.
Vector middleOfPixel(Vector v) {
    return {std::floor(v.x) + 0.5F, std::floor(v.y) + 0.5F};
}

sf::String toSfml(const std::string &text) {
    return sf::String::fromUtf8(text.begin(), text.end());
}

} // namespace

Overlay::Overlay(bool has_large_text) : text_size(sizeOfText(has_large_text)) {}
Overlay::~Overlay() = default;

void Overlay::addLine(Vector from, Vector to, Color color) {
    const Vector way = to - from;
    const float way_length = length(way);
    if (way_length == 0)
        return;
    const Vector aside{-way.y * half_line / way_length, way.x * half_line / way_length};
    for (const Vector corner : {from + aside, to + aside, to - aside, from - aside})
        vertices.emplace_back(sf::Vector2f(corner.x, corner.y), colorToSFML(color), white_texel);
}

void Overlay::addBox(Vector corner, Vector extent, Color color) {
    const Vector first = middleOfPixel(corner);
    const Vector last = middleOfPixel(corner + extent);
    addLine(first, {last.x, first.y}, color);
    addLine({first.x, last.y}, last, color);
    addLine(first, {first.x, last.y}, color);
    addLine({last.x, first.y}, last, color);
}

float Overlay::getTextHeight() const {
    return std::ceil(static_cast<float>(text_size) * line_height);
}

float Overlay::widthOf(const std::string &text) const {
    float width = 2 * text_margin;
    for (const sf::Uint32 code_point : toSfml(text))
        width += display().getFont()->getGlyph(code_point, text_size, false).advance;
    return width;
}

void Overlay::addQuad(Vector corner, Vector extent, const sf::Color &color) {
    for (const Vector part : {Vector{0, 0}, Vector{1, 0}, Vector{1, 1}, Vector{0, 1}})
        vertices.emplace_back(
            sf::Vector2f(corner.x + part.x * extent.x, corner.y + part.y * extent.y), color,
            white_texel);
}

void Overlay::addText(Vector corner, const std::string &text, Color color) {
    const auto right = static_cast<float>(display().getHorizontalPixels());
    const Vector begin{std::round(corner.x), std::round(corner.y)};
    addQuad(begin, {std::min(widthOf(text), right - begin.x), getTextHeight()}, ground);
    Vector pen = begin + Vector{text_margin, static_cast<float>(text_size)};
    for (const sf::Uint32 code_point : toSfml(text)) {
        const sf::Glyph &glyph = display().getFont()->getGlyph(code_point, text_size, false);
        if (pen.x + glyph.advance > right)
            return;
        const sf::FloatRect &place = glyph.bounds;
        const sf::FloatRect from(glyph.textureRect);
        for (const auto &[x, y] : {std::pair(0.F, 0.F), {1.F, 0.F}, {1.F, 1.F}, {0.F, 1.F}})
            vertices.emplace_back(
                sf::Vector2f(pen.x + place.left + x * place.width,
                             pen.y + place.top + y * place.height),
                colorToSFML(color),
                sf::Vector2f(from.left + x * from.width, from.top + y * from.height));
        pen.x += glyph.advance;
    }
}

void Overlay::draw() {
    sf::RenderWindow *window = display().getEventWindow();
    if (window && !vertices.empty())
        window->draw(vertices.data(), vertices.size(), sf::Quads,
                     sf::RenderStates(&display().getFont()->getTexture(text_size)));
    vertices.clear();
}

} // namespace sv
