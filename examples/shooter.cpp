// A whole game: saucers come from the right, and the third that hits the ship ends it. The arrows
// move, space shoots, P pauses, R begins anew, Q quits.

#include "selvane/selvane.h"

#include <algorithm>
#include <string>

sv::WorldManager &world() {
    return sv::WorldManager::getInstance();
}

void playSound(const std::string &label) {
    sv::play(sv::ResourceManager::getInstance().getSound(label));
}

/// Something with a sprite, which is named as its type. It ends where the world ends.
class Thing : public sv::Object {
  public:
    Thing(const std::string &new_type, sv::Solidness new_solidness, sv::Vector where,
          sv::Vector velocity) {
        setType(new_type);
        setSprite(new_type);
        setSolidness(new_solidness);
        setPosition(where);
        setVelocity(velocity);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (p_event->getType() == sv::OUT_EVENT)
            world().markForDelete(this);
        return Object::eventHandler(p_event);
    }
};

class Saucer : public Thing {
  public:
    using Thing::Thing;

    int eventHandler(const sv::Event *p_event) override {
        const auto *p_collision = sv::eventCast<sv::EventCollision>(p_event);
        if (!p_collision)
            return Thing::eventHandler(p_event);
        sv::Object *p_other = p_collision->other(this);
        if (p_other->getType() == "saucer")
            return 0;
        const bool is_shot = p_other->getType() == "shot";
        const sv::EventView count(is_shot ? "Score" : "Lives", is_shot ? 10 : -1, true);
        world().onEvent(&count);
        world().retire(this); // Not only marked: it could be hit again in this step.
        if (is_shot)
            world().retire(p_other);
        sv::spawn<Thing>("boom", sv::SPECTRAL, getPosition(), sv::Vector{})
            ->setLifeSpan(sv::UNTIL_ANIMATION_ENDS);
        playSound("boom");
        return 1;
    }
};

/// Not seen itself: it sends the saucers, and hears the keys.
class Game : public sv::Object {
  public:
    Game() {
        setSolidness(sv::SPECTRAL);
        setVisible(false);
        registerInterest(sv::KEYBOARD_EVENT);
        registerInterest(sv::STEP_EVENT);
        begin();
    }

    int eventHandler(const sv::Event *p_event) override {
        if (p_event->getType() == sv::STEP_EVENT && !world().isPaused())
            step();
        const auto *p_key = sv::eventCast<sv::EventKeyboard>(p_event);
        if (p_key && p_key->getKeyboardAction() == sv::KEY_PRESSED)
            press(p_key->getKey());
        if (p_key && p_key->getKeyboardAction() == sv::KEY_DOWN && p_ship && !world().isPaused())
            steer(p_key->getKey());
        return 1;
    }

  private:
    void begin() {
        sv::ObjectList stay = world().objectsOfType("star");
        stay.insert(this);
        world().retireAll(stay);
        p_ship = sv::spawn<Thing>("ship", sv::SOFT, sv::Vector{8, 12}, sv::Vector{});
        showView("Score", sv::TOP_LEFT);
        p_lives = showView("Lives", sv::TOP_RIGHT);
        p_lives->setValue(3);
    }

    static sv::ViewObject *showView(const std::string &label, int location) {
        auto *p_view = sv::spawn<sv::ViewObject>();
        p_view->setViewString(label);
        p_view->setLocation(location);
        p_view->setColor(sv::YELLOW);
        return p_view;
    }

    void step() {
        --wait;
        const sv::Vector where{world().getBoundary().horizontal, sv::randomFloat(4, 22)};
        const sv::Vector velocity{-sv::randomFloat(0.2F, 0.7F), 0};
        if (sv::randomInt(1, 8) == 1)
            sv::spawn<Thing>("star", sv::SPECTRAL, where, velocity)->setAltitude(0);
        if (sv::randomInt(1, 25) == 1)
            sv::spawn<Saucer>("saucer", sv::SOFT, where, velocity);
        if (p_ship && p_lives->getValue() == 0)
            end();
    }

    void end() {
        world().retire(p_ship);
        p_ship = nullptr;
        auto *p_over = showView("", sv::CENTER_CENTER);
        p_over->setSprite("over");
        p_over->setDrawSprite(true);
    }

    void press(sv::Keyboard::Key key) {
        if (key == sv::Keyboard::P)
            world().setPaused(!world().isPaused());
        if (key == sv::Keyboard::R)
            begin();
        if (key == sv::Keyboard::Q)
            sv::GameManager::getInstance().setGameOver();
    }

    void steer(sv::Keyboard::Key key) {
        sv::Vector to = p_ship->getPosition();
        to.x += static_cast<float>((key == sv::Keyboard::RIGHTARROW) -
                                   (key == sv::Keyboard::LEFTARROW));
        to.y +=
            static_cast<float>((key == sv::Keyboard::DOWNARROW) - (key == sv::Keyboard::UPARROW)) /
            2;
        world().moveObject(p_ship, {std::clamp(to.x, 4.0F, 76.0F), std::clamp(to.y, 4.0F, 22.0F)});
        if (key != sv::Keyboard::SPACE || wait > 0)
            return;
        sv::spawn<Thing>("shot", sv::SOFT, to + sv::Vector{5, 0}, sv::Vector{1.5F, 0});
        playSound("shot");
        wait = 6; // Steps until the next one.
    }

    sv::Object *p_ship = nullptr;
    sv::ViewObject *p_lives = nullptr;
    int wait = 0;
};

/// 0, or below 0 with the reason in the log. Without its sounds the game plays on.
int load() {
    auto &resources = sv::ResourceManager::getInstance();
    for (const std::string name : {"shot", "boom"})
        resources.loadSound("sounds/" + name + ".wav", name);
    int result = 0;
    for (const std::string name : {"ship", "saucer", "shot", "boom", "star", "over"})
        result += resources.loadSprite("sprites/" + name + ".txt", name);
    return result;
}

int main() {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_ready = game.startUp() == 0 && load() == 0;
    if (is_ready) {
        sv::spawn<Game>();
        game.run();
    }
    game.shutDown();
    return is_ready ? 0 : 1;
}
