// Paths: click, and the @ finds its way there around the walls. The engine searches in the time
// that a step leaves, so a long search takes some steps and costs no frame.

#include "selvane/selvane.h"

#include <string>

sv::DisplayManager &display() {
    return sv::DisplayManager::getInstance();
}

class Wall : public sv::Object {
  public:
    explicit Wall(sv::Vector where) {
        setType("Wall");
        setPosition(where);
    }

    int draw() override { return display().drawCh(getPosition(), '#'); }
};

class Walker : public sv::Object {
  public:
    explicit Walker(sv::ViewObject *p_new_message) : p_message(p_new_message) {
        setType("Walker");
        setPosition({10, 12});
        setSpeed(0.5F);
        setAvoidCollisions(true); // A path touches corners; without this a hard object stops there.
        registerInterest(sv::MOUSE_EVENT);
    }

    /// The @, and a dot for each waypoint ahead.
    int draw() override {
        for (const sv::Vector waypoint : getPath().waypoints)
            display().drawCh(waypoint, '.', sv::GREEN);
        return display().drawCh(getPosition(), '@', sv::YELLOW);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (const auto *p_mouse = sv::eventCast<sv::EventMouse>(p_event))
            return click(*p_mouse);
        if (const auto *p_path = sv::eventCast<sv::EventPath>(p_event))
            say(*p_path);
        return Object::eventHandler(p_event); // Which follows the path that was found.
    }

  private:
    int click(const sv::EventMouse &mouse) {
        if (mouse.getMouseAction() != sv::CLICKED)
            return 0;
        if (isSearching())
            dropPathFind(); // A new goal.
        if (findPath(mouse.getMousePosition()) == 0)
            p_message->setViewString("Searching");
        return 1;
    }

    void say(const sv::EventPath &found) {
        const auto steps = std::to_string(found.getPath().size());
        p_message->setViewString(found.getStatus() == sv::PATH_FOUND ? steps + " cells"
                                                                     : "There is no way.");
    }

    sv::ViewObject *p_message;
};

void build() {
    for (float y = 3; y < 20; ++y)
        for (const float x : {24.0F, 44.0F, 64.0F})
            if (y != (x == 44 ? 18 : 4)) // A gap in each wall.
                sv::spawn<Wall>(sv::Vector{x, y});
    for (float x = 5; x < 76; ++x)
        for (const float y : {2.0F, 20.0F})
            sv::spawn<Wall>(sv::Vector{x, y});
    auto *p_message = sv::spawn<sv::ViewObject>();
    p_message->setBorder(false);
    p_message->setDrawValue(false);
    p_message->setLocation(sv::BOTTOM_CENTER);
    p_message->setViewString("Click somewhere.");
    sv::spawn<Walker>(p_message);
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
