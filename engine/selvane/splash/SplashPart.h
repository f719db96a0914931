/// An object of the title sequence: it shows a sprite of its own, counts steps, and leaves with the
/// sequence.
///
/// The world owns it; it owns its sprite. Game-loop thread only.
#pragma once

#include "selvane/world/Object.h"

#include <memory>
#include <string>

namespace sv {

class Sprite;

class SplashPart : public Object {
  public:
    ~SplashPart() override;

    /// A step lowers the countdown and calls step(). A key ends the game loop; the part is deleted
    /// then, and as soon as the game is over for any other reason.
    int eventHandler(const Event *p_event) override;

  protected:
    /// `steps`: where the countdown begins. It goes on below 0.
    SplashPart(const std::string &new_type, std::unique_ptr<Sprite> new_sprite, int steps);

    virtual void step() = 0;

    /// Shows the sprite from that frame, in place of the one before.
    void show(std::unique_ptr<Sprite> new_sprite, int first_frame = 0);

    int countdown;

  private:
    std::unique_ptr<Sprite> sprite;
};

} // namespace sv
