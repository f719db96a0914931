/// Counts the seconds that are left to shoot, from 10, and ends the game at 0.
///
/// It ticks in every step whose number is divisible by 30, so the first second may be shorter. The
/// world owns it; once it has run out it stays there, inactive.
#pragma once

#include "selvane/world/ViewObject.h"

class Timer : public sv::ViewObject {
  public:
    Timer();
    ~Timer() override;

    /// 1 if the event was handled; 0 if not, or if the time is up.
    int eventHandler(const sv::Event *p_event) override;

  private:
    void expire();
};

/// The timer of the latest button, which the verdict stops. Null once that timer is deleted.
extern Timer *current_timer;
