#include "selvane/splash/Splash.h"

#include "selvane/core/Config.h"
#include "selvane/core/Event.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/ObjectWatch.h"
#include "selvane/loop/GameManager.h"
#include "selvane/resources/Sprite.h"
#include "selvane/splash/SplashSelvane.h"
#include "selvane/splash/leaveSequence.h"
#include "selvane/splash/splashArt.h"
#include "selvane/world/WorldManager.h"

#include <algorithm>

namespace sv {

namespace {

constexpr int last_countdown = -75;

/// By class: a game may have a type of the same name.
bool isOfTheSequence(const Object *p_o) {
    return dynamic_cast<const Splash *>(p_o) || dynamic_cast<const SplashSelvane *>(p_o);
}

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
    new Splash;
    game.run();

    // A closed window ends the loop with both still there.
    WorldManager &world = WorldManager::getInstance();
    for (Object *p_o : world.getAllObjects(true))
        if (isOfTheSequence(p_o))
            world.markForDelete(p_o);
    world.deleteMarked();
    logLine(10, "splash(): Finished.");
    return 0;
}

Splash::Splash() : sprite(makeBanner()) {
    setType("Splash");
    setSolidness(SPECTRAL);
    registerInterest(STEP_EVENT);
    registerInterest(KEYBOARD_EVENT);

    Animation pictures;
    pictures.setSprite(sprite.get());
    pictures.setSlowdownCount(FROZEN);
    setAnimation(pictures, true);

    const Box view = WorldManager::getInstance().getView();
    const float width = getBox().horizontal;
    setPosition(
        {view.corner.x + view.horizontal + width / 2, view.corner.y + view.vertical * 0.5F});
    // So many steps to 11 cells left of the middle, at the default frame time; one at the fastest.
    const int steps = std::max(1, Config::getInstance().getFrameTime() / 2);
    setVelocity({-(view.horizontal * 0.5F + width * 0.5F + 11.0F) / static_cast<float>(steps), 0});
}

Splash::~Splash() {
    unregisterInterest(STEP_EVENT);
    unregisterInterest(KEYBOARD_EVENT);
}

int Splash::eventHandler(const Event *p_event) {
    if (const auto left = leaveSequence(this, p_event))
        return *left;
    if (p_event->getType() != STEP_EVENT)
        return Object::eventHandler(p_event);
    step();
    return 1;
}

void Splash::step() {
    --countdown;
    if (countdown == 0) {
        Animation upright = getAnimation();
        upright.setIndex(1);
        setAnimation(upright, false);
        setVelocity({0, 0});
        new SplashSelvane(getPosition() + Vector{24, 1});
    } else if (countdown == last_countdown) {
        WorldManager::getInstance().markForDelete(this);
    }
}

} // namespace sv
