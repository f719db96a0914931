#include "game.h"

#include "selvane/selvane.h"

sv::WorldManager &world() {
    return sv::WorldManager::getInstance();
}

/// A drop of water.
class Drop : public sv::Object {
  public:
    explicit Drop(sv::Vector where) {
        setType("drop");
        setSolidness(sv::SOFT); // It stops nobody.
        setPosition(where);
        setVelocity({1, 0}); // Cells a step.
    }

    int draw() override {
        return sv::DisplayManager::getInstance().drawCh(getPosition(), 'o', sv::CYAN);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (p_event->getType() == sv::OUT_EVENT)
            world().markForDelete(this); // It has left the world.
        if (const auto *p_collision = sv::eventCast<sv::EventCollision>(p_event))
            hit(p_collision->other(this));
        return Object::eventHandler(p_event);
    }

  private:
    void hit(sv::Object *p_other) {
        if (p_other->getType() != "beetle")
            return;
        world().retire(p_other); // Gone at once, and deleted with the step.
        world().retire(this);
        const sv::EventView one_more("Score", 1, true);
        world().onEvent(&one_more);
    }
};

class Beetle : public sv::Object {
  public:
    explicit Beetle(sv::Vector where) {
        setType("beetle");
        setSprite("beetle");
        setSolidness(sv::SOFT);
        setPosition(where);
        setVelocity({-0.2F, 0});
    }

    int eventHandler(const sv::Event *p_event) override {
        if (p_event->getType() == sv::OUT_EVENT)
            world().markForDelete(this);
        return Object::eventHandler(p_event);
    }
};

class Gardener : public sv::Object {
  public:
    Gardener() {
        setType("gardener");
        setSprite("gardener");
        setPosition({6, 10}); // Cells, from the window's upper left corner.
        registerInterest(sv::KEYBOARD_EVENT);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (const auto *p_key = sv::eventCast<sv::EventKeyboard>(p_event))
            return hear(*p_key);
        return Object::eventHandler(p_event);
    }

  private:
    int hear(const sv::EventKeyboard &key) {
        if (key.getKeyboardAction() == sv::KEY_DOWN)
            walk(key.getKey());
        else if (key.getKeyboardAction() == sv::KEY_PRESSED)
            press(key.getKey());
        return 1;
    }

    /// Called in every step in which a key is held.
    void walk(sv::Keyboard::Key key) {
        sv::Vector to = getPosition();
        if (key == sv::Keyboard::UPARROW)
            to.y -= 0.5F;
        else if (key == sv::Keyboard::DOWNARROW)
            to.y += 0.5F;
        else if (key == sv::Keyboard::LEFTARROW)
            to.x -= 0.5F;
        else if (key == sv::Keyboard::RIGHTARROW)
            to.x += 0.5F;
        const sv::Box garden = world().getBoundary();
        if (to.x > 1 && to.x < garden.horizontal - 2 && to.y > 1 && to.y < garden.vertical - 1)
            world().moveObject(this, to);
    }

    void press(sv::Keyboard::Key key) {
        if (key == sv::Keyboard::Q)
            sv::GameManager::getInstance().setGameOver();
        if (key == sv::Keyboard::SPACE)
            sv::spawn<Drop>(getPosition() + sv::Vector{3, 0});
    }
};

/// Sends the beetles. Not seen, and nobody collides with it.
class Garden : public sv::Object {
  public:
    Garden() {
        setType("garden");
        setSolidness(sv::SPECTRAL);
        setVisible(false);
        registerInterest(sv::STEP_EVENT);
    }

    int eventHandler(const sv::Event *p_event) override {
        const auto *p_step = sv::eventCast<sv::EventStep>(p_event);
        if (!p_step)
            return Object::eventHandler(p_event);
        if (p_step->getStepCount() % 40 == 0)
            sv::spawn<Beetle>(sv::Vector{47, sv::randomFloat(3, 17)});
        return 1;
    }
};

/// 0, or -1 with the reason in the log.
int loadFiles() {
    auto &resources = sv::ResourceManager::getInstance();
    if (resources.loadSprite("sprites/gardener.txt", "gardener") != 0)
        return -1;
    return resources.loadSprite("sprites/beetle.txt", "beetle");
}

void begin() {
    sv::spawn<Gardener>();
    sv::spawn<Garden>();
    auto *p_score = sv::spawn<sv::ViewObject>();
    p_score->setViewString("Score");
    p_score->setLocation(sv::TOP_RIGHT);
    p_score->setColor(sv::YELLOW);
}

int playGame() {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_ready = game.startUp() == 0 && loadFiles() == 0;
    if (is_ready) {
        begin();
        game.run();
    }
    game.shutDown();
    return is_ready ? 0 : 1;
}
