/// A clock that only moves when the test, or a sleep, moves it. In use from its making to its end.
#pragma once

#include "selvane/platform/system.h"

#include <functional>
#include <vector>

namespace test {

class ManualTime final : public sv::platform::TimeSource {
  public:
    ManualTime() { sv::platform::setTimeSource(this); }
    ~ManualTime() { sv::platform::setTimeSource(nullptr); }
    ManualTime(const ManualTime &) = delete;
    ManualTime &operator=(const ManualTime &) = delete;

    /// The wall clock, in milliseconds since the month began.
    long long now_ms = 0;
    /// What sleep() was asked for, and how much longer it takes than that.
    std::vector<int> sleeps;
    int oversleep_ms = 0;
    /// Called in the middle of each sleep.
    std::function<void()> during_sleep;
    bool local_time_fails = false;
    int local_second = 9;
    /// What a request for a timer period is answered, and how many more were made than given back.
    int timer_answer = 0;
    int open_timer_periods = 0;

    sv::platform::UtcTime utcNow() override {
        const long long s = now_ms / 1000;
        return {static_cast<int>(s / 86400) + 1, static_cast<int>(s / 3600 % 24),
                static_cast<int>(s / 60 % 60), static_cast<int>(s % 60),
                static_cast<int>(now_ms % 1000)};
    }

    /// 07:08:09 or another second, whatever the wall clock says.
    bool localTime(std::tm &local) override {
        local.tm_hour = 7;
        local.tm_min = 8;
        local.tm_sec = local_second;
        return !local_time_fails;
    }

    void sleep(int milliseconds) override {
        sleeps.push_back(milliseconds);
        now_ms += milliseconds + oversleep_ms;
        if (during_sleep)
            during_sleep();
    }

    int beginTimerPeriod(unsigned /*milliseconds*/) override {
        ++open_timer_periods;
        return timer_answer;
    }

    int endTimerPeriod(unsigned /*milliseconds*/) override {
        --open_timer_periods;
        return timer_answer;
    }
};

} // namespace test
