#include "game.h"

#include "selvane/selvane.h"

sv::WorldManager &world() {
    return sv::WorldManager::getInstance();
}

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
    }
};

/// 0, or -1 with the reason in the log.
int loadFiles() {
    auto &resources = sv::ResourceManager::getInstance();
    return resources.loadSprite("sprites/gardener.txt", "gardener");
}

int playGame() {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_ready = game.startUp() == 0 && loadFiles() == 0;
    if (is_ready) {
        sv::spawn<Gardener>();
        game.run();
    }
    game.shutDown();
    return is_ready ? 0 : 1;
}
