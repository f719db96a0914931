// Sprites: pictures of characters, read from text files and animated. A ship in two frames, a
// saucer in four, and an explosion that begins somewhere else whenever its animation has ended.

#include "selvane/selvane.h"

#include <string>

class Picture : public sv::Object {
  public:
    Picture(const std::string &label, sv::Vector where) {
        setType(label);
        setSprite(label); // The object takes the sprite's size as its box.
        setPosition(where);
    }
};

class Explosion : public Picture {
  public:
    Explosion() : Picture("boom", {20, 18}) {
        setSolidness(sv::SPECTRAL);
        registerInterest(sv::ANIMATION_END_EVENT);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (p_event->getType() != sv::ANIMATION_END_EVENT)
            return Object::eventHandler(p_event);
        const float x = getPosition().x + 20;
        setPosition({x < 80 ? x : 20, 18});
        return 1;
    }
};

/// The first frame of a saucer, since an animation can also stand still.
class Wreck : public Picture {
  public:
    Wreck() : Picture("saucer", {60, 6}) {
        sv::Animation still = getAnimation();
        still.setSlowdownCount(sv::FROZEN);
        setAnimation(still, true);
    }
};

/// 0, or -1 with the reason in the log: the file and the line that is wrong.
int loadSprites() {
    for (const std::string name : {"ship", "saucer", "boom", "shot"})
        if (sv::ResourceManager::getInstance().loadSprite("sprites/" + name + ".txt", name) != 0)
            return -1;
    return 0;
}

int main() {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_ready = game.startUp() == 0 && loadSprites() == 0;
    if (is_ready) {
        sv::spawn<Picture>("ship", sv::Vector{20, 6});
        sv::spawn<Picture>("saucer", sv::Vector{40, 6});
        sv::spawn<Picture>("shot", sv::Vector{27, 6})->setVelocity({0.05F, 0});
        sv::spawn<Wreck>();
        sv::spawn<Explosion>();
        game.run();
    }
    game.shutDown();
    return is_ready ? 0 : 1;
}
