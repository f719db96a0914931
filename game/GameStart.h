/// The title: its picture in the middle and the menu music, until P starts the game or Q ends it.
///
/// The world owns it. Once the game has begun it stays there, inactive, and never comes back.
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

    /// Draws its sprite, as a plain object does, and no label and value.
    int draw() override { return Object::draw(); } // NOLINT(bugprone-parent-virtual-call)

  private:
    void startGame();

    sv::Music *music = nullptr; // Null if its file was not loaded.
};
