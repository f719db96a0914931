/// The clock for a game's tests: it moves only when the test moves it, or when somebody sleeps, and
/// a sleep takes no time. The steps of the game loop then follow each other at once, and what they
/// do hangs on no machine's speed.
///
/// In use from its making, which comes before the engine's start, to its end, which comes after the
/// engine's shutdown. One at a time; game-loop thread only.
#pragma once

#include "selvane/platform/system.h"

#include <ctime>
#include <functional>
#include <vector>

namespace sv {

class ManualTime final : public platform::TimeSource {
  public:
    ManualTime() { platform::setTimeSource(this); }
    ~ManualTime() { platform::setTimeSource(nullptr); }
    ManualTime(const ManualTime &) = delete;
    ManualTime &operator=(const ManualTime &) = delete;

    /// The wall clock in UTC, in milliseconds since the month began. A test may move it back, too.
    long long now_ms = 0;
    /// The milliseconds that every sleep so far was asked for, in order. A long test may clear it
    /// from time to time.
    std::vector<int> sleeps;
    /// How many milliseconds longer than asked for each sleep takes.
    int oversleep_ms = 0;
    /// Called at the end of each sleep, which is between two steps of the game loop.
    std::function<void()> during_sleep;
    /// The local time, which the log writes, is 07:08 and this second, whatever `now_ms` says.
    int local_second = 9;
    /// Whether the local time cannot be had.
    bool local_time_fails = false;
    /// What each request for a timer period is answered: 0, or platform::timer_period_refused.
    int timer_answer = 0;
    /// How many timer periods were asked for and not given back.
    int open_timer_periods = 0;

    platform::UtcTime utcNow() override {
        const long long s = now_ms / 1000;
        return {static_cast<int>(s / 86400) + 1, static_cast<int>(s / 3600 % 24),
                static_cast<int>(s / 60 % 60), static_cast<int>(s % 60),
                static_cast<int>(now_ms % 1000)};
    }

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

} // namespace sv
