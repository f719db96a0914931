/// The frame timer, in microseconds, read from the system's wall clock.
///
/// It keeps the time of the month in 32 bits that wrap, so an interval is right if it is shorter
/// than about 71 minutes and no new month begins in it. The resolution is a millisecond.
#pragma once

#include <cstdint>

namespace sv {

class Clock {
  public:
    /// Starts now.
    Clock();

    /// Restarts; returns the microseconds since the last restart.
    unsigned int delta();

    /// Microseconds since the last restart. Below 0 when the wall clock was set back meanwhile,
    /// and for intervals past about 36 minutes.
    int split() const;

  private:
    std::uint32_t previous_time;
};

} // namespace sv
