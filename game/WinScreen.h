/// The end of a won game: the news in the middle, and at the bottom the prompt for Q, which ends
/// the program. The world owns both.
#pragma once

#include "selvane/world/ViewObject.h"

class WinScreen : public sv::ViewObject {
  public:
    WinScreen();

    /// 1 for a keyboard event, whatever the key; 0 for any other.
    int eventHandler(const sv::Event *p_event) override;
};

class QToQuit : public sv::ViewObject {
  public:
    QToQuit();

    /// 1 for a keyboard event, whatever the key; 0 for any other.
    int eventHandler(const sv::Event *p_event) override;
};
