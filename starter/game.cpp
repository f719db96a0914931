#include "game.h"

#include "selvane/selvane.h"

namespace {

sv::WorldManager &world() {
    return sv::WorldManager::getInstance();
}

/// Walks along the ground with the arrow keys. Q quits.
class Hero : public sv::Object {
  public:
    Hero() {
        setType("Hero");
        setSprite("hero");
        const sv::Box ground = world().getBoundary();
        setPosition({ground.horizontal / 2, ground.vertical - 2});
        registerInterest(sv::KEYBOARD_EVENT);
    }

    int eventHandler(const sv::Event *event) override {
        const auto *key = sv::eventCast<sv::EventKeyboard>(event);
        if (!key)
            return sv::Object::eventHandler(event);
        if (key->getKey() == sv::Keyboard::Q)
            sv::GameManager::getInstance().setGameOver();
        if (key->getKeyboardAction() == sv::KEY_RELEASED) // Else: pressed, or held in this step.
            return 0;
        if (key->getKey() == sv::Keyboard::LEFTARROW)
            walk(-1);
        if (key->getKey() == sv::Keyboard::RIGHTARROW)
            walk(1);
        return 1;
    }

  private:
    void walk(float cells) {
        const sv::Vector to = getPosition() + sv::Vector{cells, 0};
        if (to.x >= 2 && to.x <= world().getBoundary().horizontal - 3)
            world().moveObject(this, to);
    }
};

/// Falls from the top. Caught or not, another one follows.
class Star : public sv::Object {
  public:
    Star() {
        setType("Star");
        setSolidness(sv::SOFT); // It meets the hero, and does not stop him.
        const int columns = static_cast<int>(world().getBoundary().horizontal);
        setPosition({static_cast<float>(sv::randomInt(2, columns - 3)), 1});
        setVelocity({0, sv::randomFloat(0.1F, 0.3F)}); // Cells a step.
    }

    int draw() override {
        return sv::DisplayManager::getInstance().drawCh(getPosition(), '*', sv::YELLOW);
    }

    int eventHandler(const sv::Event *event) override {
        const auto *collision = sv::eventCast<sv::EventCollision>(event);
        if (collision && collision->other(this)->getType() == "Hero") {
            sv::play(sv::ResourceManager::getInstance().getSound("catch"));
            const sv::EventView one_more("Score", 1, true);
            world().onEvent(&one_more);
        } else if (!sv::eventCast<sv::EventOut>(event))
            return sv::Object::eventHandler(event);
        world().retire(this);
        sv::spawn<Star>();
        return 1;
    }
};

void loadResources() {
    sv::ResourceManager &resources = sv::ResourceManager::getInstance();
    resources.loadSprite("sprites/hero.txt", "hero");
    resources.loadSound("sounds/catch.wav", "catch");
}

/// The world owns what is made here.
void fillWorld() {
    sv::spawn<Hero>();
    for (int i = 0; i < 3; ++i)
        sv::spawn<Star>();
    auto *score = sv::spawn<sv::ViewObject>();
    score->setLocation(sv::TOP_RIGHT);
    score->setViewString("Score");
}

} // namespace

int playGame() {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_started = game.startUp() == 0;
    if (is_started) {
        loadResources();
        fillWorld();
        game.run();
    }
    game.shutDown();
    return is_started ? sv::GameManager::getExitStatus() : 1;
}
