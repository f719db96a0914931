/// The engine's title sequence: a banner with its name slides in, and a winged creature rises and
/// settles beside it. It ends after 90 steps, or with any key. Game-loop thread only.
#pragma once

#include "selvane/splash/SplashPart.h"

namespace sv {

/// Shows the title sequence: runs the game loop until the game is over. The end of the sequence,
/// any key, and closing the window set that flag, and it stays set; nothing of the sequence stays
/// in the world. 0, or -1 if the game manager is not started, or from a handler.
int splash();

/// The banner.
class Splash : public SplashPart {
  public:
    /// Starts off the right edge of the view, on its way to the middle.
    Splash();

  private:
    void step() override;
};

} // namespace sv
