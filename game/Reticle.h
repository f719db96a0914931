/// The '+' that follows the mouse in place of its cursor. The world owns it.
#pragma once

#include "selvane/world/Object.h"

class Reticle : public sv::Object {
  public:
    /// Puts it in the middle of the world.
    Reticle();

    /// Returns 1 if the mouse moved, else 0.
    int eventHandler(const sv::Event *p_event) override;
    int draw() override;
};
