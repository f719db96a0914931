#include "network/NetworkManager.h"

#include "core/Event.h"
#include "core/LogManager.h"

namespace sv {

NetworkManager &NetworkManager::getInstance() {
    static NetworkManager instance;
    return instance;
}

NetworkManager::NetworkManager() {
    setType("NetworkManager");
}

bool NetworkManager::isValid(const std::string &event_type) const {
    return event_type == NETWORK_EVENT || event_type == CUSTOM_NETWORK_EVENT ||
           event_type == KEYBOARD_NETWORK_EVENT || event_type == MOUSE_NETWORK_EVENT;
}

int NetworkManager::startUp() {
    if (isStarted())
        return refuseSecondStart();
    Manager::startUp();
    LogManager::getInstance().writeLog(5, "NetworkManager::startUp(): successfully started.");
    return 0;
}

void NetworkManager::shutDown() {
    Manager::shutDown();
    LogManager::getInstance().writeLog(5, "NetworkManager::shutDown(): successfully stopped.");
}

} // namespace sv
