/// The clock, the sleep, the working folder and the state of files, as the operating system has
/// them.
///
/// Everything above this folder takes its time from timeSource(), so that a test can put a clock
/// of its own there, as ManualTime is one. Game-loop thread only.
#pragma once

#include <cstddef>
#include <cstdio>
#include <ctime>
#include <string>

namespace sv::platform {

/// A reading of the wall clock in UTC.
struct UtcTime {
    int day = 1; ///< Day of the month, 1 to 31.
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
};

/// What beginTimerPeriod and endTimerPeriod answer when the period cannot be had.
inline constexpr int timer_period_refused = 97;

/// Wall clock, sleep and timer resolution.
class TimeSource {
  public:
    virtual UtcTime utcNow() = 0;

    /// Writes the local calendar time to `local`; false if it cannot be had.
    virtual bool localTime(std::tm &local) = 0;

    /// Blocks for that many milliseconds; 0 or less returns at once. A wall clock that is set
    /// meanwhile does not change how long.
    virtual void sleep(int milliseconds) = 0;

    /// Asks for timers of that resolution: 0, or timer_period_refused. Each granted request is
    /// given back with endTimerPeriod.
    virtual int beginTimerPeriod(unsigned milliseconds) = 0;
    virtual int endTimerPeriod(unsigned milliseconds) = 0;

  protected:
    // Nobody deletes one through this class, and with a virtual destructor the system's own would
    // be gone at the end of the process while globals still log.
    ~TimeSource() = default;
};

/// The system's own time source, whichever is in use.
TimeSource &systemTimeSource();

/// The time source in use: the system's, unless setTimeSource has put another.
TimeSource &timeSource();

/// Puts `source` in place of the system's; null puts the system's back. The caller keeps it, and
/// keeps it alive while it is in use.
void setTimeSource(TimeSource *source);

/// The working folder in UTF-8, or an empty text if its name cannot be had or does not fit into
/// `capacity` bytes, the terminating zero included.
std::string workingDirectory(std::size_t capacity);

/// Whether that name is a folder's, a device's or of something else that is no file; false if it is
/// nobody's. The name is as fopen() takes it.
bool isOtherThanFile(const std::string &name);

/// Whether an open file has been deleted meanwhile, so that nobody can read what is written to it.
/// A system that does not delete open files answers false.
bool isDeleted(std::FILE *file);

} // namespace sv::platform
