#include "selvane/splash/SplashPart.h"

#include "selvane/core/Event.h"
#include "selvane/loop/GameManager.h"
#include "selvane/resources/Sprite.h"
#include "selvane/world/WorldManager.h"

#include <utility>

namespace sv {

SplashPart::SplashPart(const std::string &new_type, std::unique_ptr<Sprite> new_sprite, int steps)
    : countdown(steps) {
    setType(new_type);
    setSolidness(SPECTRAL);
    registerInterest(STEP_EVENT);
    registerInterest(KEYBOARD_EVENT);
    show(std::move(new_sprite));
}

SplashPart::~SplashPart() {
    unregisterInterest(STEP_EVENT);
    unregisterInterest(KEYBOARD_EVENT);
}

int SplashPart::eventHandler(const Event *p_event) {
    GameManager &game = GameManager::getInstance();
    const bool was_over = game.getGameOver();
    if (was_over || p_event->getType() == KEYBOARD_EVENT) {
        game.setGameOver();
        WorldManager::getInstance().markForDelete(this);
        return was_over ? 0 : 1;
    }
    if (p_event->getType() != STEP_EVENT)
        return Object::eventHandler(p_event);
    --countdown;
    step();
    return 1;
}

void SplashPart::show(std::unique_ptr<Sprite> new_sprite, int first_frame) {
    Animation pictures = getAnimation();
    pictures.setSprite(new_sprite.get());
    pictures.setIndex(first_frame);
    setAnimation(pictures, true);
    sprite = std::move(new_sprite);
}

} // namespace sv
