#include "game/playGame.h"

#include "game/Button.h"
#include "game/GameStart.h"
#include "game/LevelManager.h"
#include "game/resources.h"
#include "selvane/core/LogManager.h"
#include "selvane/input/InputManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/splash/Splash.h"
#include "selvane/world/spawn.h"

int playGame() {
    sv::GameManager &game = sv::GameManager::getInstance();
    if (game.startUp() != 0) {
        sv::logLine("Error starting GameManager!");
        game.shutDown();
        return 1;
    }
    sv::LogManager::getInstance().setFlush();
    sv::splash();
    // Closing the window during the title sequence quits the game.
    if (!sv::InputManager::getInstance().isWindowClosed()) {
        loadResources();
        LevelManager::getInstance().startUp();
        warnIfButtonIsOutside();
        sv::spawn<GameStart>();
        game.run();
    }
    game.shutDown();
    return sv::GameManager::getExitStatus();
}
