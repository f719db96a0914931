// Starts the engine, lets its loop run for three seconds, and stops it.

#include "core/Event.h"
#include "core/LogManager.h"
#include "loop/GameManager.h"
#include "world/Object.h"

#include <cstdio>

namespace {

constexpr int steps_to_run = 90;

class StepCounter : public sv::Object {
  public:
    StepCounter() { registerInterest(sv::STEP_EVENT); }

    int eventHandler(const sv::Event *p_event) override {
        if (p_event->getType() != sv::STEP_EVENT)
            return 0;
        sv::GameManager &game = sv::GameManager::getInstance();
        if (game.getStepCount() + 1 >= steps_to_run)
            game.setGameOver();
        return 1;
    }
};

} // namespace

int main() {
    sv::GameManager &game = sv::GameManager::getInstance();
    if (game.startUp() != 0) {
        sv::LogManager::getInstance().writeLog("Error starting GameManager!");
        game.shutDown();
        return 1;
    }
    sv::LogManager::getInstance().setFlush(true);

    new StepCounter; // The world owns it from here.
    game.run();
    std::printf("The engine ran %d steps of %d ms. Its log is selvane.log.\n", game.getStepCount(),
                game.getFrameTime());
    game.shutDown();
    return 0;
}
