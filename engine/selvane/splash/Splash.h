/// The engine's title sequence: a banner with its name slides in, a winged creature rises and
/// settles beside it, and after 90 steps, or with any key, it is over.
///
/// Both are ordinary objects, which the world owns; each owns its sprite. Game-loop thread only.
#pragma once

#include "selvane/world/Object.h"

#include <memory>

namespace sv {

class Sprite;

/// Shows the title sequence: runs the game loop until the game is over, which is what the end of
/// the sequence, any key, and closing the window make it. The flag stays set, and nothing of the
/// sequence is left in the world. 0, or -1 if the game manager is not started, or from a handler.
int splash();

/// The banner.
class Splash : public Object {
  public:
    /// Starts off the right edge of the view, on its way to the middle.
    Splash();
    ~Splash() override;

    int eventHandler(const Event *p_event) override;

  private:
    void step();

    int countdown = 15; // Steps until it stops; on below 0 until it ends.
    std::unique_ptr<Sprite> sprite;
};

} // namespace sv
