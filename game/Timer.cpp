#include "game/Timer.h"

#include "game/GameOver.h"
#include "game/resources.h"
#include "selvane/core/EventStep.h"
#include "selvane/world/spawn.h"

namespace {

constexpr int ticks = 10;
constexpr int steps_a_tick = 30; // A second, at the default frame time.

} // namespace

Timer *current_timer = nullptr;

Timer::Timer() {
    setLocation(sv::TOP_LEFT);
    setViewString("TIMER:");
    setValue(ticks);
    setColor(sv::CYAN);
    registerInterest(sv::STEP_EVENT);
    setActive(true);
}

Timer::~Timer() {
    if (current_timer == this)
        current_timer = nullptr;
}

int Timer::eventHandler(const sv::Event *p_event) {
    if (ViewObject::eventHandler(p_event) != 0)
        return 1;
    const auto *step_event = sv::eventCast<sv::EventStep>(p_event);
    if (!step_event)
        return 0;
    if (step_event->getStepCount() % steps_a_tick != 0)
        return 1;
    setValue(getValue() - 1);
    if (getValue() >= 1)
        return 1;
    expire();
    return 0;
}

void Timer::expire() {
    stopMusic(labels::LEVEL_MUSIC);
    playSound(labels::GAME_OVER_SOUND);
    setActive(false);
    sv::spawn<GameOver>();
}
