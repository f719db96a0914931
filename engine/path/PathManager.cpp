#include "path/PathManager.h"

#include "core/LogManager.h"

namespace sv {

PathManager &PathManager::getInstance() {
    static PathManager instance;
    return instance;
}

PathManager::PathManager() {
    setType("PathManager");
}

int PathManager::startUp() {
    if (isStarted())
        return refuseSecondStart();
    Manager::startUp();
    LogManager::getInstance().writeLog(5, "PathManager::startUp(): successfully started.");
    return 0;
}

void PathManager::shutDown() {
    Manager::shutDown();
    LogManager::getInstance().writeLog(5, "PathManager::shutDown(): successfully stopped.");
}

} // namespace sv
