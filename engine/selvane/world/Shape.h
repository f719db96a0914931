/// A filled figure that stands for an object, instead of its sprite or besides it: circle, square
/// or triangle. A value: each object holds one of its own.
///
/// All figures are drawn through one polygon that the program keeps. Game-loop thread only.
#pragma once

#include "selvane/core/Color.h"
#include "selvane/core/Vector.h"
#include "selvane/display/figures.h"

namespace sv {

class Shape {
  public:
    /// A white, opaque circle whose radius is the font scale times the whole pixels of a cell's
    /// smaller side: 24 pixels by default.
    Shape();

    /// A ShapeType; any other number is refused with a line in the log.
    void setType(int new_type);
    ShapeType getType() const { return type; }

    /// `CUSTOM` draws with the components of setRGB(); any other colour overwrites them at the next
    /// draw.
    void setColor(Color new_color) { color = new_color; }
    Color getColor() const { return color; }

    void setRGB(unsigned char new_r, unsigned char new_g, unsigned char new_b);
    unsigned char getRed() const { return r; }
    unsigned char getGreen() const { return g; }
    unsigned char getBlue() const { return b; }

    /// Pixels: the radius of a circle, a measure of the edges of the others. What it measures is
    /// said at draw().
    void setSize(float new_size) { size = new_size; }
    float getSize() const { return size; }

    /// 0 is invisible, 255 (the default) opaque.
    void setAlpha(unsigned char new_alpha) { alpha = new_alpha; }
    unsigned char getAlpha() const { return alpha; }

    /// Draws the figure at that position of the world, in cells, over what was drawn before.
    ///
    /// A circle is a polygon of 3 to 10 corners, the whole part of its size. A square's half
    /// diagonal is its size divided by the font scale, a triangle's corners are half its size from
    /// their centre. The first square turns the shared polygon by 45 degrees and nothing ever turns
    /// it back: figures drawn later, circles and triangles too, stand turned. An UNDEFINED_SHAPE
    /// draws the previous figure once more, colour excepted, where that one stood.
    void draw(Vector world_pos);

  private:
    Color color = COLOR_DEFAULT;
    // Seen only by a `CUSTOM` colour before anyone has said which.
    unsigned char r = 255;
    unsigned char g = 255;
    unsigned char b = 255;
    ShapeType type = CIRCLE;
    float size;
    unsigned char alpha = 255;
};

} // namespace sv
