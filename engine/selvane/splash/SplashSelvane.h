/// The creature of the title sequence: rises from below the view, settles, and ends the sequence.
/// Game-loop thread only.
#pragma once

#include "selvane/core/Vector.h"
#include "selvane/splash/SplashPart.h"

namespace sv {

class SplashSelvane : public SplashPart {
  public:
    /// `new_target`: where it rises to, in cells of the world.
    explicit SplashSelvane(Vector new_target);

  private:
    void step() override;
    void land();

    Vector target;
};

} // namespace sv
