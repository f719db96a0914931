/// The targets. Shooting one removes it and counts as a hit if it is what the player was told to
/// remember, else as a miss. The world owns them.
#pragma once

#include "game/ShapeKind.h"
#include "selvane/world/Object.h"

namespace sv {
class EventMouse;
}

class Shape : public sv::Object {
  public:
    // Both constructors put it right of the world (see placeRandomly), without a sprite.

    /// In a random colour.
    Shape();
    explicit Shape(ShapeColor new_color);

    /// Called with every left click; shoots this target if the click is on it. One click can shoot
    /// several targets.
    virtual void hit(const sv::EventMouse *mouse_event);

    /// Always returns 0.
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
    // Cells. No rule reads them: a click within a cell of the position hits, whatever the size.
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
