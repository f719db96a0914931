// An object: it moves by its velocity, draws itself, and gets events. This one is a ball that turns
// back at the edges of the window and shows how often it has done that.

#include "selvane/selvane.h"

#include <string>

class Ball : public sv::Object {
  public:
    Ball() {
        setType("Ball");
        setPosition({40, 12});
        setVelocity({1, 0.4F}); // Cells a step.
    }

    /// Called in every step in which the view shows the object.
    int draw() override {
        auto &display = sv::DisplayManager::getInstance();
        display.drawString(getPosition() + sv::Vector{2, 0}, std::to_string(turns));
        return display.drawCh(getPosition(), 'O', sv::YELLOW);
    }

    /// The world sends "sv-out" to an object that has just left it.
    int eventHandler(const sv::Event *p_event) override {
        if (p_event->getType() != sv::OUT_EVENT)
            return Object::eventHandler(p_event);
        turnBack();
        return 1;
    }

  private:
    void turnBack() {
        const sv::Box world = sv::WorldManager::getInstance().getBoundary();
        const sv::Vector place = getPosition();
        sv::Vector velocity = getVelocity();
        if (place.x < 0 || place.x > world.horizontal)
            velocity.x = -velocity.x;
        if (place.y < 0 || place.y > world.vertical)
            velocity.y = -velocity.y;
        setVelocity(velocity);
        ++turns;
    }

    int turns = 0;
};

int main() {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_started = game.startUp() == 0;
    if (is_started) {
        sv::spawn<Ball>(); // From here on the world owns it, and deletes it in the end.
        game.run();
    }
    game.shutDown();
    return is_started ? 0 : 1;
}
