#pragma once

#include "selvane/core/EventStep.h"
#include "selvane/world/Object.h"

#include <functional>
#include <utility>

namespace test {

/// Does what a test wants in each step of the game loop; steps are counted from 0.
class Clockwork : public sv::Object {
  public:
    explicit Clockwork(std::function<void(int step)> new_action) : action(std::move(new_action)) {
        setVisible(false);
        registerInterest(sv::STEP_EVENT);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (const auto *step = sv::eventCast<sv::EventStep>(p_event))
            action(step->getStepCount());
        return 1;
    }

  private:
    std::function<void(int step)> action;
};

} // namespace test
