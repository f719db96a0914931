/// The title: its picture in the middle and the menu music, until P starts the game or Q ends it.
///
/// The world owns it; it stays there, inactive, when the game has begun, and never comes back.
#pragma once

#include "selvane/world/ViewObject.h"

namespace sv {
class Music;
}

class GameStart : public sv::ViewObject {
  public:
    GameStart();

    /// 1 for a keyboard event, whatever the key; 0 for any other.
    int eventHandler(const sv::Event *p_event) override;

    /// The sprite instead of a label and a value: what any object draws, not what its parent does.
    int draw() override { return Object::draw(); } // NOLINT(bugprone-parent-virtual-call)

  private:
    void startGame();

    sv::Music *music = nullptr; // There may be none.
};
