#include "selvane/splash/SplashSelvane.h"

#include "selvane/loop/GameManager.h"
#include "selvane/resources/Sprite.h"
#include "selvane/splash/splashArt.h"
#include "selvane/world/WorldManager.h"

namespace sv {

namespace {

constexpr int steps_to_rise = 30;
constexpr int landing_countdown = -15;
constexpr int last_countdown = -45;

} // namespace

SplashSelvane::SplashSelvane(Vector new_target)
    : SplashPart("SplashSelvane", makeFlyingCreature(), steps_to_rise), target(new_target) {
    const Box view = WorldManager::getInstance().getView();
    const float y = view.corner.y + view.vertical + 6;
    setPosition({target.x, y});
    setVelocity({0, -(y - target.y) / static_cast<float>(steps_to_rise)});
}

void SplashSelvane::step() {
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
    // The sprite has only frame 0: nothing is visible in the step of the landing, and then the
    // index wraps to the picture. The blink belongs to the landing.
    show(makeLandedCreature(), 1);
    setPosition(getPosition() - Vector{1, 0});
}

} // namespace sv
