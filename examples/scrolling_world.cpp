// A world larger than the window: 200 x 60 cells, of which the view shows 80 x 24. It follows the
// @, which the arrows move. M sets it on the middle of the world.

#include "selvane/selvane.h"

#include <string>

sv::WorldManager &world() {
    return sv::WorldManager::getInstance();
}

/// A sign that shows where in the world it stands.
class Milestone : public sv::Object {
  public:
    explicit Milestone(sv::Vector where) {
        setType("Milestone");
        setSolidness(sv::SPECTRAL);
        setAltitude(1);
        setPosition(where);
        setBox({{0, 0}, 8, 1}); // An object is drawn if the view touches its box.
    }

    int draw() override {
        const sv::Vector at = getPosition();
        const std::string text = "|" + sv::toString(at.x) + "," + sv::toString(at.y);
        return sv::DisplayManager::getInstance().drawString(at, text, sv::LEFT_JUSTIFIED, sv::CYAN);
    }
};

class Walker : public sv::Object {
  public:
    Walker() {
        setType("Walker");
        setPosition({8, 8});
        registerInterest(sv::KEYBOARD_EVENT);
        world().setViewFollowing(this);
    }

    int draw() override {
        return sv::DisplayManager::getInstance().drawCh(getPosition(), '@', sv::YELLOW);
    }

    int eventHandler(const sv::Event *p_event) override {
        const auto *p_key = sv::eventCast<sv::EventKeyboard>(p_event);
        if (!p_key)
            return Object::eventHandler(p_event);
        if (p_key->getKeyboardAction() == sv::KEY_DOWN)
            go(p_key->getKey());
        return 1;
    }

  private:
    void go(sv::Keyboard::Key key) {
        sv::Vector to = getPosition();
        if (key == sv::Keyboard::LEFTARROW)
            to.x -= 1;
        else if (key == sv::Keyboard::RIGHTARROW)
            to.x += 1;
        else if (key == sv::Keyboard::UPARROW)
            to.y -= 1;
        else if (key == sv::Keyboard::DOWNARROW)
            to.y += 1;
        else if (key == sv::Keyboard::M)
            to = {100, 30};
        const sv::Box all = world().getBoundary();
        if (to.x >= 0 && to.x < all.horizontal && to.y >= 0 && to.y < all.vertical)
            world().moveObject(this, to); // setPosition() alone would not move the view.
    }
};

void build() {
    world().setBoundary({{0, 0}, 200, 60});
    world().setViewSlack({0.5F, 0.5F}); // The @ moves freely in the middle half of the view.
    for (float x = 0; x < 200; x += 20)
        for (float y = 0; y < 60; y += 6)
            sv::spawn<Milestone>(sv::Vector{x, y});
    sv::spawn<Walker>();
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
