#include "world/Shape.h"

#include "core/Config.h"
#include "core/LogManager.h"
#include "display/DisplayManager.h"
#include "world/WorldManager.h"

#include <SFML/Graphics/CircleShape.hpp>
#include <SFML/Graphics/RenderWindow.hpp>
#include <algorithm>
#include <cmath>

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

} // namespace

Shape::Shape()
    : size(Config::getInstance().getFontScale() * std::trunc(std::min(charWidth(), charHeight()))) {
}

void Shape::setType(int new_type) {
    if (new_type < UNDEFINED_SHAPE || new_type > TRIANGLE) {
        LogManager::getInstance().writeLog("Shape::setType(): Unknown shape type %d. Ignoring.",
                                           new_type);
        return;
    }
    type = static_cast<ShapeType>(new_type);
}

void Shape::setRGB(unsigned char new_r, unsigned char new_g, unsigned char new_b) {
    r = new_r;
    g = new_g;
    b = new_b;
}

void Shape::draw(Vector world_pos) {
    LogManager &log = LogManager::getInstance();
    sf::RenderWindow *p_window = DisplayManager::getInstance().getWindow();
    if (p_window == nullptr) {
        log.writeLog(5, "Shape::draw(): DisplayManager window not defined.");
        return;
    }
    const Vector pixel = spacesToPixels(world_pos - WorldManager::getInstance().getView().corner);
    sf::CircleShape &polygon = sharedPolygon();
    colorToRGB(color, r, g, b);
    polygon.setFillColor(sf::Color(r, g, b, alpha));
    switch (type) {
    case CIRCLE:
        formCircle(polygon, pixel, size);
        break;
    case SQUARE:
        formSquare(polygon, pixel, size);
        break;
    case TRIANGLE:
        formTriangle(polygon, pixel, size);
        break;
    case UNDEFINED_SHAPE:
        break;
    }
    log.writeLog(20, "Shape::draw(): Drawing at (%.2f, %.2f)", pixel.x, pixel.y);
    p_window->draw(polygon);
}

} // namespace sv
