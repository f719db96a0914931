#include "selvane/splash/SplashSelvane.h"

#include "selvane/core/Event.h"
#include "selvane/loop/GameManager.h"
#include "selvane/resources/Sprite.h"
#include "selvane/splash/leaveSequence.h"
#include "selvane/splash/splashArt.h"
#include "selvane/world/WorldManager.h"

namespace sv {

namespace {

constexpr int steps_to_rise = 30;
constexpr int landing_countdown = -15;
constexpr int last_countdown = -45;

} // namespace

SplashSelvane::SplashSelvane(Vector new_target)
    : target(new_target), countdown(steps_to_rise), sprite(makeFlyingCreature()) {
    setType("SplashSelvane");
    setSolidness(SPECTRAL);
    registerInterest(STEP_EVENT);
    registerInterest(KEYBOARD_EVENT);

    Animation pictures;
    pictures.setSprite(sprite.get());
    setAnimation(pictures, true);

    const Box view = WorldManager::getInstance().getView();
    const float y = view.corner.y + view.vertical + 6;
    setPosition({target.x, y});
    setVelocity({0, -(y - target.y) / static_cast<float>(steps_to_rise)});
}

SplashSelvane::~SplashSelvane() {
    unregisterInterest(STEP_EVENT);
    unregisterInterest(KEYBOARD_EVENT);
}

int SplashSelvane::eventHandler(const Event *p_event) {
    if (const auto left = leaveSequence(this, p_event))
        return *left;
    if (p_event->getType() != STEP_EVENT)
        return Object::eventHandler(p_event);
    step();
    return 1;
}

void SplashSelvane::step() {
    --countdown;
    if (countdown < 1 && getPosition().y <= target.y)
        setVelocity({0, 0});
    if (countdown == landing_countdown)
        land();
    if (countdown == last_countdown) {
        GameManager::getInstance().setGameOver();
        WorldManager::getInstance().markForDelete(this);
    }
}

void SplashSelvane::land() {
    auto landed = makeLandedCreature();
    Animation pictures = getAnimation();
    pictures.setSprite(landed.get());
    // One past its only frame: in the step of the landing there is nothing to see, and with the
    // next the index wraps to the picture. The blink belongs to the landing.
    pictures.setIndex(1);
    setAnimation(pictures, true);
    sprite = std::move(landed);
    setPosition(getPosition() - Vector{1, 0});
}

} // namespace sv
