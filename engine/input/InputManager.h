/// Turns what the keyboard and the mouse do into events, once a step. It has no window to read yet.
///
/// Game-loop thread only.
#pragma once

#include "core/Manager.h"

namespace sv {

class InputManager : public Manager {
  public:
    static InputManager &getInstance();

    bool isValid(const std::string &event_type) const override;
    int startUp() override;
    void shutDown() override;

    /// Delivers the input since the last call.
    void getInput() {}

  private:
    InputManager();
};

} // namespace sv
