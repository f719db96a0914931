#include "input/InputManager.h"

#include "core/Event.h"
#include "core/LogManager.h"

namespace sv {

InputManager &InputManager::getInstance() {
    static InputManager instance;
    return instance;
}

InputManager::InputManager() {
    setType("InputManager");
}

bool InputManager::isValid(const std::string &event_type) const {
    return event_type == KEYBOARD_EVENT || event_type == MOUSE_EVENT;
}

int InputManager::startUp() {
    if (isStarted())
        return refuseSecondStart();
    Manager::startUp();
    LogManager::getInstance().writeLog(5, "InputManager::startUp(): successfully started.");
    return 0;
}

void InputManager::shutDown() {
    Manager::shutDown();
    LogManager::getInstance().writeLog(5, "InputManager::shutDown(): successfully stopped.");
}

} // namespace sv
