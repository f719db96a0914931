/// The end of a lost game: plays its animation once, in the middle, then deletes itself, which ends
/// the program. The world owns it.
#pragma once

#include "selvane/world/ViewObject.h"

class GameOver : public sv::ViewObject {
  public:
    GameOver();
    ~GameOver() override;

    /// 1 for a step, 0 for anything else.
    int eventHandler(const sv::Event *p_event) override;

    /// Draws its sprite, as a plain object does, and no label and value.
    int draw() override { return Object::draw(); } // NOLINT(bugprone-parent-virtual-call)

  private:
    int time_to_live = 0; // Steps. Without a sprite the first step is the last.
};
