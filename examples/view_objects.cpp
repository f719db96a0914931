// View objects: score, lives and messages, which stay where they are when the world scrolls. Space
// scores, L loses a life. With the last one gone, a sprite in the middle says that the game is
// over.

#include "selvane/selvane.h"

#include <string>

/// Changes the number of all view objects with that label.
void tell(const std::string &label, int change) {
    const sv::EventView event(label, change, true);
    sv::WorldManager::getInstance().onEvent(&event);
}

/// Not seen itself: it listens to the keys.
class Referee : public sv::Object {
  public:
    Referee() {
        setType("Referee");
        setSolidness(sv::SPECTRAL);
        setVisible(false);
        registerInterest(sv::KEYBOARD_EVENT);
        addCounter("Score", 0, sv::TOP_LEFT, sv::YELLOW);
        addCounter("Lives", lives, sv::TOP_RIGHT, sv::GREEN);
        message = sv::spawn<sv::ViewObject>();
        message->setBorder(false);
        message->setDrawValue(false);
        message->setLocation(sv::BOTTOM_CENTER);
        message->setViewString("Space scores, L loses a life.");
    }

    int eventHandler(const sv::Event *p_event) override {
        const auto *p_key = sv::eventCast<sv::EventKeyboard>(p_event);
        if (!p_key || p_key->getKeyboardAction() != sv::KEY_PRESSED || lives == 0)
            return Object::eventHandler(p_event);
        if (p_key->getKey() == sv::Keyboard::SPACE)
            tell("Score", 10);
        if (p_key->getKey() == sv::Keyboard::L)
            loseLife();
        return 1;
    }

  private:
    static void addCounter(const std::string &label, int value, int location, sv::Color color) {
        auto *p_counter = sv::spawn<sv::ViewObject>();
        p_counter->setViewString(label);
        p_counter->setValue(value);
        p_counter->setLocation(location);
        p_counter->setColor(color);
    }

    void loseLife() {
        tell("Lives", -1);
        if (--lives > 0)
            return;
        auto *p_end = sv::spawn<sv::ViewObject>();
        p_end->setSprite("over");
        p_end->setDrawSprite(true); // Its sprite, in place of text and border.
        p_end->setLocation(sv::CENTER_CENTER);
        message->setViewString("Close the window to leave.");
    }

    sv::ViewObject *message = nullptr;
    int lives = 3;
};

int main() {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_ready = game.startUp() == 0 && sv::ResourceManager::getInstance().loadSprite(
                                                     "sprites/over.txt", "over") == 0;
    if (is_ready) {
        sv::spawn<Referee>();
        game.run();
    }
    game.shutDown();
    return is_ready ? 0 : 1;
}
