/// A clock for a game's tests: only the test and sleeping move it, and a sleep takes no real time.
/// The game loop then runs its steps without pausing, and the result does not depend on the speed
/// of the machine.
///
/// In use from construction to destruction, which puts the clock of before back. Construct it
/// before the engine starts and destroy it after the engine has shut down. Game-loop thread only.
#pragma once

#include "selvane/platform/system.h"

#include <ctime>
#include <functional>
#include <vector>

namespace sv {

class ManualTime final : public platform::TimeSource {
  public:
    ManualTime() : before(platform::timeSource()) { platform::setTimeSource(this); }
    ~ManualTime() { platform::setTimeSource(&before); }
    ManualTime(const ManualTime &) = delete;
    ManualTime &operator=(const ManualTime &) = delete;

    /// The wall clock in UTC, in milliseconds since the month began. A test may also move it back.
    long long now_ms = 0;
    /// The requested milliseconds of each sleep so far, in order. A long test may clear it.
    std::vector<int> sleeps;
    /// How many milliseconds longer than asked for each sleep takes.
    int oversleep_ms = 0;
    /// Called at the end of each sleep, that is between two steps of the game loop.
    std::function<void()> during_sleep;
    /// The local time, which the log shows, is 07:08 and this second, whatever `now_ms` is.
    int local_second = 9;
    /// Whether reading the local time fails.
    bool local_time_fails = false;
    /// The answer to each request for a timer period: 0, or platform::timer_period_refused.
    int timer_answer = 0;
    /// Timer periods that were requested and not yet given back.
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

  private:
    platform::TimeSource &before;
};

} // namespace sv
