#include "selvane/display/figures.h"

#include "selvane/core/Config.h"
#include "selvane/display/DisplayManager.h"

#include <SFML/Graphics/CircleShape.hpp>
#include <SFML/Graphics/RenderWindow.hpp>
#include <algorithm>

namespace sv {

namespace {

constexpr float square_rotation = 45;  // Degrees.
constexpr float square_height = 1.75F; // A square stands higher than its position by size / this.
constexpr float fewest_corners = 3;
constexpr float most_corners = 10; // So that a circle is visibly a polygon.

/// The one that every figure is drawn through. It lies in main memory alone, so it may outlive the
/// window; and it is never destroyed, so that a global object may draw when main() is over.
sf::CircleShape &sharedPolygon() {
    constexpr std::size_t corners = 30;
    static sf::CircleShape &polygon = *new sf::CircleShape(0, corners);
    return polygon;
}

std::size_t circleCorners(float size) {
    if (!(size > fewest_corners)) // What is no number counts as small.
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
        return; // Drawn as the last one left it.
    }
}

} // namespace

void drawFigure(const Figure &figure, Vector pixel) {
    sf::CircleShape &polygon = sharedPolygon();
    polygon.setFillColor(sf::Color(figure.r, figure.g, figure.b, figure.alpha));
    form(polygon, figure, pixel);
    DisplayManager::getInstance().getWindow()->draw(polygon);
}

} // namespace sv
