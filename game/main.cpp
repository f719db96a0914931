// Starts the engine and plays its title sequence.

#include "core/LogManager.h"
#include "loop/GameManager.h"
#include "splash/Splash.h"

int main() {
    sv::GameManager &game = sv::GameManager::getInstance();
    if (game.startUp() != 0) {
        sv::LogManager::getInstance().writeLog("Error starting GameManager!");
        game.shutDown();
        return 1;
    }
    sv::LogManager::getInstance().setFlush();
    sv::splash();
    game.shutDown();
    return 0;
}
