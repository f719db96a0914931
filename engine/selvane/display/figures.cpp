#include "selvane/display/figures.h"

#include "selvane/core/Config.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/display/ScreenCapture.h"

#include <SFML/Graphics/CircleShape.hpp>
#include <algorithm>

namespace sv {

namespace {

constexpr float square_rotation = 45;  // Degrees.
constexpr float square_height = 1.75F; // A square stands higher than its position by size / this.
constexpr float fewest_corners = 3;
constexpr float most_corners = 10; // So that a circle is visibly a polygon.

constexpr std::size_t corners = 30; // Before the first figure.

/// All figures are drawn through this one. It uses no graphics memory, so it may outlive the
/// window; and it is never destroyed, so that a global object may draw after main().
sf::CircleShape &sharedPolygon() {
    static sf::CircleShape &polygon = *new sf::CircleShape(0, corners);
    return polygon;
}

std::size_t circleCorners(float size) {
    if (!(size > fewest_corners)) // A NaN counts as small.
        return static_cast<std::size_t>(fewest_corners);
    return static_cast<std::size_t>(std::min(size, most_corners));
}

void formCircle(sf::CircleShape &polygon, Vector pixel, float size) {
    polygon.setPointCount(circleCorners(size));
    polygon.setRadius(size);
    polygon.setPosition(pixel.x - size * 0.5F, pixel.y - size * 0.5F);
}

/// Leaves the polygon turned; see Shape::draw().
void formSquare(sf::CircleShape &polygon, Vector pixel, float size) {
    polygon.setPointCount(4);
    polygon.setRotation(square_rotation);
    polygon.setRadius(size / Config::getInstance().getFontScale());
    polygon.setPosition(pixel.x + size * 0.5F, pixel.y - size / square_height);
}

void formTriangle(sf::CircleShape &polygon, Vector pixel, float size) {
    polygon.setPointCount(3);
    polygon.setRadius(size * 0.5F);
    polygon.setPosition(pixel.x - size * 0.5F, pixel.y - size * 0.5F);
}

void form(sf::CircleShape &polygon, const Figure &figure, Vector pixel) {
    switch (figure.type) {
    case CIRCLE:
        return formCircle(polygon, pixel, figure.size);
    case SQUARE:
        return formSquare(polygon, pixel, figure.size);
    case TRIANGLE:
        return formTriangle(polygon, pixel, figure.size);
    case UNDEFINED_SHAPE:
        return; // Drawn as the previous one left it.
    }
}

/// Whether a point is inside a convex polygon: strictly on the same side of all its edges. A
/// polygon of size 0, or of a size that is not a number, covers nothing.
bool isCovered(const sf::CircleShape &polygon, sf::Vector2f point) {
    const std::size_t count = polygon.getPointCount();
    std::size_t left = 0;
    std::size_t right = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const sf::Vector2f from = polygon.getPoint(i);
        const sf::Vector2f edge = polygon.getPoint((i + 1) % count) - from;
        const sf::Vector2f way = point - from;
        left += edge.x * way.y < edge.y * way.x ? 1 : 0;
        right += edge.x * way.y > edge.y * way.x ? 1 : 0;
    }
    return left == count || right == count;
}

void captureFigure(ScreenCapture &capture, const sf::CircleShape &polygon) {
    const DisplayManager &display = DisplayManager::getInstance();
    const Vector size = display.getCellSize();
    const sf::Color color = polygon.getFillColor();
    for (int row = 0; row < display.getVertical(); ++row) {
        for (int column = 0; column < display.getHorizontal(); ++column) {
            const Vector cell{static_cast<float>(column), static_cast<float>(row)};
            const sf::Vector2f middle{(cell.x + 0.5F) * size.x, (cell.y + 0.5F) * size.y};
            if (isCovered(polygon, polygon.getInverseTransform().transformPoint(middle)))
                capture.put(cell, U'#', {color.r, color.g, color.b});
        }
    }
}

} // namespace

void drawFigure(const Figure &figure, Vector pixel) {
    sf::CircleShape &polygon = sharedPolygon();
    polygon.setFillColor(sf::Color(figure.r, figure.g, figure.b, figure.alpha));
    form(polygon, figure, pixel);
    DisplayManager &display = DisplayManager::getInstance();
    if (ScreenCapture *capture = display.getCapture(); capture && figure.alpha > 0)
        captureFigure(*capture, polygon);
    display.addFigure(polygon);
}

void forgetFigures() {
    sharedPolygon() = sf::CircleShape(0, corners);
}

} // namespace sv
