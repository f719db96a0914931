/// Runs what a test wants to do in the steps of the loop.
#pragma once

#include "core/Event.h"
#include "loop/GameManager.h"
#include "world/Object.h"
#include "world/WorldManager.h"

#include <functional>

namespace test {

class Clockwork : public sv::Object {
  public:
    explicit Clockwork(std::function<void(int step)> new_action) : action(std::move(new_action)) {
        setVisible(false);
        registerInterest(sv::STEP_EVENT);
    }

    /// Steps are counted from 1.
    int eventHandler(const sv::Event * /*p_event*/) override {
        action(sv::GameManager::getInstance().getStepCount() + 1);
        return 1;
    }

  private:
    std::function<void(int step)> action;
};

/// The only object of a type; null if there are none or more.
inline sv::Object *only(const char *type) {
    const sv::ObjectList found = sv::WorldManager::getInstance().objectsOfType(type);
    return found.getCount() == 1 ? found.at(0) : nullptr;
}

} // namespace test
