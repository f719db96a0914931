#include "path/PathManager.h"

#include "core/LogManager.h"
#include "path/PathFind.h"

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

int PathManager::add(PathFind *p_path_find) {
    if (!p_path_find)
        return -1;
    searches.push_back(p_path_find);
    return 0;
}

int PathManager::remove(const PathFind *p_path_find) {
    return std::erase(searches, p_path_find) > 0 ? 0 : -1;
}

void PathManager::forgetTarget(const Object *p_o) {
    for (PathFind *p_search : searches)
        if (p_search->getTarget() == p_o)
            p_search->forgetTarget();
}

} // namespace sv
