#include "resources/ResourceManager.h"

#include "core/LogManager.h"

namespace sv {

ResourceManager &ResourceManager::getInstance() {
    static ResourceManager instance;
    return instance;
}

ResourceManager::ResourceManager() {
    setType("ResourceManager");
}

int ResourceManager::startUp() {
    if (isStarted())
        return refuseSecondStart();
    Manager::startUp();
    LogManager::getInstance().writeLog(5, "RM::startUp(): successfully started.");
    return 0;
}

void ResourceManager::shutDown() {
    Manager::shutDown();
    LogManager::getInstance().writeLog(5, "RM::shutDown(): successfully stopped.");
}

} // namespace sv
