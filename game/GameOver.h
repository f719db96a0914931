/// The end of a game that is lost: plays its animation once, in the middle, and with its own end
/// ends the program.
///
/// The world owns it.
#pragma once

#include "selvane/world/ViewObject.h"

class GameOver : public sv::ViewObject {
  public:
    GameOver();
    ~GameOver() override;

    /// 1 for a step, 0 for anything else.
    int eventHandler(const sv::Event *p_event) override;

    /// The sprite instead of a label and a value: what any object draws, not what its parent does.
    int draw() override { return Object::draw(); } // NOLINT(bugprone-parent-virtual-call)

  private:
    int time_to_live = 0; // Steps. Without a sprite the first one is the last.
};
