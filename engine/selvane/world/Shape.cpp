#include "selvane/world/Shape.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/display/DisplayManager.h"

#include <algorithm>
#include <cmath>

namespace sv {

Shape::Shape()
    : size(Config::getInstance().getFontScale() * std::trunc(std::min(charWidth(), charHeight()))) {
}

void Shape::setType(int new_type) {
    if (new_type < UNDEFINED_SHAPE || new_type > TRIANGLE) {
        logLine("Shape::setType(): Unknown shape type %d. Ignoring.", new_type);
        return;
    }
    type = static_cast<ShapeType>(new_type);
}

void Shape::setColor(Color new_color) {
    color = new_color;
    is_rgb = false;
}

void Shape::setColor(Rgb new_color) {
    color = CUSTOM;
    is_rgb = true;
    setRGB(new_color.r, new_color.g, new_color.b);
}

std::optional<Rgb> Shape::getRgb() const {
    return is_rgb ? std::optional(Rgb(r, g, b)) : std::nullopt;
}

void Shape::setRGB(unsigned char new_r, unsigned char new_g, unsigned char new_b) {
    r = new_r;
    g = new_g;
    b = new_b;
}

void Shape::draw(Vector world_pos) {
    DisplayManager &display = DisplayManager::getInstance();
    if (!display.isDrawing()) {
        logLine(5, "Shape::draw(): DisplayManager window not defined.");
        return;
    }
    const Vector pixel = display.worldToPixels(world_pos);
    colorToRGB(color, r, g, b);
    logLine(20, "Shape::draw(): Drawing at (%.2f, %.2f)", pixel.x, pixel.y);
    drawFigure({type, size, r, g, b, alpha}, pixel);
}

} // namespace sv
