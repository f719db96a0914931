/// The frame timer, in microseconds, read from the system's wall clock.
///
/// The time of the month is kept in 32 bits that wrap, and differences are taken in the same
/// arithmetic: one is right while the interval is shorter than about 71 minutes and no month turns
/// in it. The clock counts in microseconds but advances by whole milliseconds.
#pragma once

#include <cstdint>

namespace sv {

class Clock {
  public:
    /// Starts now.
    Clock();

    /// Microseconds since the last restart, and restarts.
    unsigned int delta();

    /// Microseconds since the last restart. Below 0 when the wall clock was set back meanwhile,
    /// and for intervals past about 36 minutes.
    int split() const;

  private:
    std::uint32_t previous_time;
};

} // namespace sv
