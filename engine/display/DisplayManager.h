/// Owns the window and draws the world's cells into it. There is no window yet: it knows its size
/// in characters.
///
/// Game-loop thread only.
#pragma once

#include "core/Manager.h"

namespace sv {

class DisplayManager : public Manager {
  public:
    static DisplayManager &getInstance();

    int startUp() override;
    void shutDown() override;

    /// Shows what was drawn since the last call and begins anew. 0, or -1 without a window.
    int swapBuffers() { return -1; }

    /// The window's size in characters: the built-in one before the first start.
    int getHorizontal() const { return window_horizontal_chars; }
    int getVertical() const { return window_vertical_chars; }

  private:
    DisplayManager();

    int window_horizontal_chars = 80;
    int window_vertical_chars = 24;
};

} // namespace sv
