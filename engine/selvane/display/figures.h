/// Filled figures in the window: circle, square and triangle.
///
/// All are drawn through one polygon, which keeps its rotation from figure to figure: see
/// Shape::draw(). Game-loop thread only.
#pragma once

#include "selvane/core/Vector.h"

namespace sv {

enum ShapeType : int {
    UNDEFINED_SHAPE = -1, ///< Not drawn by objects.
    CIRCLE = 0,
    SQUARE = 1,
    TRIANGLE = 2,
};

struct Figure {
    ShapeType type = CIRCLE;
    float size = 0; ///< Pixels, see Shape::setSize().
    unsigned char r = 255;
    unsigned char g = 255;
    unsigned char b = 255;
    unsigned char alpha = 255;
};

/// Draws a figure over what was drawn before, at a pixel of the configured window. REQUIRES:
/// DisplayManager::isDrawing().
void drawFigure(const Figure &figure, Vector pixel);

/// The polygon is as before the first figure.
void forgetFigures();

} // namespace sv
