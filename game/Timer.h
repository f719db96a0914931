/// Counts the seconds that are left to shoot, from 10, and ends the game at 0.
///
/// It ticks in every step whose number is divisible by 30, so the first second may be a short one.
/// The world owns it; one that has run out stays there, inactive.
#pragma once

#include "selvane/world/ViewObject.h"

class Timer : public sv::ViewObject {
  public:
    Timer();
    ~Timer() override;

    /// 1 if it was handled, 0 if not, or if the time is up.
    int eventHandler(const sv::Event *p_event) override;

  private:
    void expire();
};

/// The one that the verdict stops: made by the latest button. Null if that one is gone.
extern Timer *current_timer;
