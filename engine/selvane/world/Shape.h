/// A filled figure that an object shows besides its sprite or instead: circle, square or triangle.
/// A value: each object has its own. All figures are drawn with one shared polygon. Game-loop
/// thread only.
#pragma once

#include "selvane/core/Color.h"
#include "selvane/core/Vector.h"
#include "selvane/display/figures.h"

#include <optional>

namespace sv {

class Shape {
  public:
    /// A white, opaque circle whose radius is the font scale times the whole pixels of a cell's
    /// smaller side: 24 pixels by default.
    Shape();

    /// A ShapeType; any other number is refused with a line in the log.
    void setType(int new_type);
    ShapeType getType() const { return type; }

    /// `CUSTOM` draws with the components of setRGB(); other colours overwrite those when drawn.
    void setColor(Color new_color);
    Color getColor() const { return color; }

    /// Any colour; getColor() is `CUSTOM` then. It is written among its object's attributes, which
    /// the components of setRGB() are not.
    void setColor(Rgb new_color);
    /// The colour if it was set as one of any components.
    std::optional<Rgb> getRgb() const;

    void setRGB(unsigned char new_r, unsigned char new_g, unsigned char new_b);
    unsigned char getRed() const { return r; }
    unsigned char getGreen() const { return g; }
    unsigned char getBlue() const { return b; }

    /// In pixels; draw() says what it measures.
    void setSize(float new_size) { size = new_size; }
    float getSize() const { return size; }

    /// 0 is invisible, 255 (the default) opaque.
    void setAlpha(unsigned char new_alpha) { alpha = new_alpha; }
    unsigned char getAlpha() const { return alpha; }

    /// Draws the figure at that position of the world, in cells, over what was drawn before.
    ///
    /// A circle's size is its radius; it is a polygon of as many corners as the whole part of the
    /// size, 3 to 10. A square's half diagonal is its size divided by the font scale, a triangle's
    /// corners are half its size from their centre. The first square turns the shared polygon by 45
    /// degrees for good: all later figures are drawn turned. An UNDEFINED_SHAPE draws the previous
    /// figure again at the same place, in its own colour.
    void draw(Vector world_pos);

  private:
    Color color = COLOR_DEFAULT;
    bool is_rgb = false;
    // For a `CUSTOM` colour without setRGB().
    unsigned char r = 255;
    unsigned char g = 255;
    unsigned char b = 255;
    ShapeType type = CIRCLE;
    float size;
    unsigned char alpha = 255;
};

} // namespace sv
