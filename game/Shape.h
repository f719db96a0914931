/// The targets. One that is shot counts as a hit if it is what the player was told to remember, as
/// a miss if it is not, and is gone.
///
/// The world owns them.
#pragma once

#include "game/ShapeKind.h"
#include "selvane/world/Object.h"

namespace sv {
class EventMouse;
}

class Shape : public sv::Object {
  public:
    // Both stand somewhere right of the world (see placeRandomly) and show nothing yet.

    /// In a random colour.
    Shape();
    explicit Shape(ShapeColor new_color);

    /// Receives every left click. One that is on it shoots it, and every other target it is on.
    virtual void hit(const sv::EventMouse *p_mouse_event);

    /// Returns 0: a click is everyone's.
    int eventHandler(const sv::Event *p_event) override;

    ShapeColor getColor() const { return color; }
    ShapeKind getKind() const { return kind; }

    /// Shows the sprite of its kind and colour, if it is loaded.
    void updateSprite();

  protected:
    void become(const char *new_type, ShapeKind new_kind, float new_width, float new_height = 0);

  private:
    ShapeColor color;
    ShapeKind kind = ShapeKind::SQUARE;
    // Cells. No rule reads them: a target answers within a cell of its position, however large.
    float width = 0;
    float height = 0;
};

class Square : public Shape {
  public:
    Square() { setUp(); }
    explicit Square(ShapeColor new_color) : Shape(new_color) { setUp(); }

  private:
    void setUp() { become("Square", ShapeKind::SQUARE, 12); }
};

class Triangle : public Shape {
  public:
    Triangle() { setUp(); }
    explicit Triangle(ShapeColor new_color) : Shape(new_color) { setUp(); }

  private:
    void setUp() { become("Triangle", ShapeKind::TRIANGLE, 6, 12); }
};

class Circle : public Shape {
  public:
    Circle() { setUp(); }
    explicit Circle(ShapeColor new_color) : Shape(new_color) { setUp(); }

  private:
    void setUp() { become("Circle", ShapeKind::CIRCLE, 12); }
};
