#include "game/GameOver.h"

#include "game/resources.h"
#include "selvane/core/Event.h"
#include "selvane/loop/GameManager.h"
#include "selvane/resources/Sprite.h"
#include "selvane/world/WorldManager.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace {

/// The steps that one pass of the animation takes. A file may claim more than an int holds, or less
/// than nothing.
int stepsOf(const sv::Sprite &sprite) {
    const std::int64_t steps = std::int64_t{sprite.getFrameCount()} * sprite.getSlowdown();
    return static_cast<int>(std::clamp<std::int64_t>(steps, 0, std::numeric_limits<int>::max()));
}

} // namespace

GameOver::GameOver() {
    setType("GameOver");
    if (setSprite(labels::GAME_OVER_SPRITE) == 0)
        time_to_live = stepsOf(*getAnimation().getSprite());
    setLocation(sv::CENTER_CENTER);
    registerInterest(sv::STEP_EVENT);
    playSound(labels::GAME_OVER_SOUND);
}

GameOver::~GameOver() {
    sv::GameManager::getInstance().setGameOver();
}

int GameOver::eventHandler(const sv::Event *p_event) {
    if (p_event->getType() != sv::STEP_EVENT)
        return 0;
    if (--time_to_live <= 0)
        sv::WorldManager::getInstance().markForDelete(this);
    return 1;
}
