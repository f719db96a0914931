/// The creature of the title sequence: rises from below the view, settles, and ends the sequence.
///
/// The world owns it; it owns its sprite. Game-loop thread only.
#pragma once

#include "selvane/core/Vector.h"
#include "selvane/world/Object.h"

#include <memory>

namespace sv {

class Sprite;

class SplashSelvane : public Object {
  public:
    /// `new_target`: where it rises to, in cells of the world.
    explicit SplashSelvane(Vector new_target);
    ~SplashSelvane() override;

    int eventHandler(const Event *p_event) override;

  private:
    void step();
    void land();

    Vector target;
    int countdown; // Steps of its way; on below 0 until it ends the sequence.
    std::unique_ptr<Sprite> sprite;
};

} // namespace sv
