// Collisions: hard objects stop each other, a soft one is only met, a spectral one touches nothing.
// A hard ball turns back at hard walls and takes the soft coins; the spectral ghost goes through
// all of it.

#include "selvane/selvane.h"

#include <cmath>

class Thing : public sv::Object {
  public:
    Thing(const char *new_type, char new_ch, sv::Color new_color, sv::Solidness new_solidness,
          sv::Vector where)
        : ch(new_ch), color(new_color) {
        setType(new_type);
        setSolidness(new_solidness);
        setPosition(where);
    }

    int draw() override {
        return sv::DisplayManager::getInstance().drawCh(getPosition(), ch, color);
    }

  private:
    char ch;
    sv::Color color;
};

class Ball : public Thing {
  public:
    explicit Ball(sv::Vector where) : Thing("Ball", 'O', sv::YELLOW, sv::HARD, where) {
        setVelocity({0.5F, 0.25F});
    }

    /// Both sides of a collision get the event.
    int eventHandler(const sv::Event *p_event) override {
        const auto *p_collision = sv::eventCast<sv::EventCollision>(p_event);
        if (!p_collision)
            return Object::eventHandler(p_event);
        sv::Object *p_other = p_collision->other(this);
        if (p_other->getType() == "Coin")
            sv::WorldManager::getInstance().retire(p_other); // Gone at once.
        else
            bounceOff(p_other);
        return 1;
    }

  private:
    /// Where a wall stops it, it turns back: at once, since the next wall may be hit in this step.
    void bounceOff(const sv::Object *p_wall) {
        const sv::Vector way = getPosition() - p_wall->getPosition();
        sv::Vector velocity = getVelocity();
        if (std::abs(way.x) >= std::abs(way.y))
            velocity.x = std::copysign(velocity.x, way.x);
        else
            velocity.y = std::copysign(velocity.y, way.y);
        setVelocity(velocity);
    }
};

class Ghost : public Thing {
  public:
    explicit Ghost(sv::Vector where) : Thing("Ghost", 'G', sv::MAGENTA, sv::SPECTRAL, where) {
        setVelocity({0.2F, 0});
    }
};

void build() {
    for (float x = 10; x <= 50; ++x)
        for (const float y : {4.0F, 18.0F})
            sv::spawn<Thing>("Wall", '#', sv::WHITE, sv::HARD, sv::Vector{x, y});
    for (float y = 5; y < 18; ++y)
        for (const float x : {10.0F, 50.0F})
            sv::spawn<Thing>("Wall", '#', sv::WHITE, sv::HARD, sv::Vector{x, y});
    for (float x = 14; x < 48; x += 4)
        sv::spawn<Thing>("Coin", '$', sv::GREEN, sv::SOFT, sv::Vector{x, 11});
    sv::spawn<Ball>(sv::Vector{30, 8});
    sv::spawn<Ghost>(sv::Vector{4, 14});
}

int main() {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_started = game.startUp() == 0;
    if (is_started) {
        build();
        game.run();
    }
    game.shutDown();
    return is_started ? 0 : 1;
}
