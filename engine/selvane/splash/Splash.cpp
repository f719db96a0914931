#include "selvane/splash/Splash.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/ObjectWatch.h"
#include "selvane/loop/GameManager.h"
#include "selvane/resources/Sprite.h"
#include "selvane/splash/SplashSelvane.h"
#include "selvane/splash/splashArt.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/spawn.h"

#include <algorithm>

namespace sv {

namespace {

constexpr int steps_to_slide = 15;
constexpr int last_countdown = -75;

} // namespace

int splash() {
    logLine(10, "splash(): Started.");
    GameManager &game = GameManager::getInstance();
    if (!game.isStarted())
        return logFailure(
            "splash(): Error! Cannot run splash screen until game manger is started.");
    if (ObjectWatch::isAny())
        return logFailure("splash(): Error! Called from a handler, draw() or destructor of an "
                          "object. Ignored. It has its place before run().");
    spawn<Splash>();
    game.run();

    // A closed window ends the loop while the parts still exist. They are found by their class: a
    // game may have types of the same names.
    WorldManager &world = WorldManager::getInstance();
    for (Object *object : world.getAllObjects(true))
        if (dynamic_cast<SplashPart *>(object))
            world.markForDelete(object);
    world.deleteMarked();
    logLine(10, "splash(): Finished.");
    return 0;
}

Splash::Splash() : SplashPart("Splash", makeBanner(), steps_to_slide) {
    Animation frozen = getAnimation();
    frozen.setSlowdownCount(FROZEN);
    setAnimation(frozen, false);

    const Box view = WorldManager::getInstance().getView();
    const float width = getBox().horizontal;
    setPosition(
        {view.corner.x + view.horizontal + width / 2, view.corner.y + view.vertical * 0.5F});
    // At this speed it would reach 11 cells left of the middle in so many steps, at least one.
    const int steps = std::max(1, Config::getInstance().getFrameTime() / 2);
    setVelocity({-(view.horizontal * 0.5F + width * 0.5F + 11.0F) / static_cast<float>(steps), 0});
}

void Splash::step() {
    if (countdown == 0) {
        Animation upright = getAnimation();
        upright.setIndex(1);
        setAnimation(upright, false);
        setVelocity({0, 0});
        spawn<SplashSelvane>(getPosition() + Vector{24, 1});
    } else if (countdown == last_countdown) {
        WorldManager::getInstance().markForDelete(this);
    }
}

} // namespace sv
