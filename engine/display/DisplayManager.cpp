#include "display/DisplayManager.h"

#include "core/Config.h"
#include "core/LogManager.h"

namespace sv {

DisplayManager &DisplayManager::getInstance() {
    static DisplayManager instance;
    return instance;
}

DisplayManager::DisplayManager() {
    setType("DisplayManager");
}

int DisplayManager::startUp() {
    if (isStarted())
        return refuseSecondStart();
    const Config &config = Config::getInstance();
    window_horizontal_chars = config.getWindowHorizontalChars();
    window_vertical_chars = config.getWindowVerticalChars();
    Manager::startUp();
    LogManager::getInstance().writeLog(5, "DisplayManager::startUp(): successfully started.");
    return 0;
}

void DisplayManager::shutDown() {
    Manager::shutDown();
    LogManager::getInstance().writeLog(5, "DisplayManager::shutDown(): successfully stopped.");
}

} // namespace sv
