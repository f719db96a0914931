#include "world/WorldManager.h"

#include "core/LogManager.h"

namespace sv {

WorldManager &WorldManager::getInstance() {
    static WorldManager instance;
    return instance;
}

WorldManager::WorldManager() {
    setType("WorldManager");
}

int WorldManager::startUp() {
    if (isStarted())
        return refuseSecondStart();
    Manager::startUp();
    LogManager::getInstance().writeLog(5, "WorldManager::startUp(): successfully started.");
    return 0;
}

void WorldManager::shutDown() {
    Manager::shutDown();
    LogManager::getInstance().writeLog(5, "WorldManager::shutDown(): successfully stopped.");
}

} // namespace sv
