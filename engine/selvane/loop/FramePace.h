/// Keeps the game loop at its rate: how long the network and the path finding may take of a step,
/// and how long the loop sleeps at its end. A step that overslept shortens the next one.
///
/// The wall clock may be set at any moment: even then no step sleeps longer than one frame and path
/// finding never gets more than one.
#pragma once

#include <cstdint>

namespace sv {

class Clock;

class FramePace {
  public:
    /// `new_frame_time`: milliseconds a step should take; 0 or less never sleeps.
    explicit FramePace(int new_frame_time) : frame_time(new_frame_time) {}

    /// Microseconds of a step that the network may take: a fifth of it.
    std::int64_t networkBudget() const;

    /// Milliseconds that path finding may take: 95 % of what is left `split` microseconds into the
    /// step. 0 or less when nothing is left.
    int pathBudget(int split) const;

    /// Sleeps until the end of the step that began with the clock's last restart. Logs a step that
    /// took too long, except the first one and one right after an oversleep.
    void endStep(const Clock &clock, int step_count);

  private:
    std::int64_t remaining(int split) const;

    int frame_time;
    std::int64_t adjust = 0; // Microseconds that the last sleep took too long.
};

} // namespace sv
