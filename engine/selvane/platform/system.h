/// The operating system's clock, sleep, random numbers, folders and file states.
///
/// All other rooms take their time from timeSource(), so that a test can replace it with a clock of
/// its own, such as ManualTime. Game-loop thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <functional>
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

/// What beginTimerPeriod() and endTimerPeriod() return when the system refuses the period.
inline constexpr int timer_period_refused = 97;

/// Wall clock, sleep and timer resolution.
class TimeSource {
  public:
    virtual UtcTime utcNow() = 0;

    /// Writes the local calendar time to `local`; false if the system has none.
    virtual bool localTime(std::tm &local) = 0;

    /// Blocks for that many milliseconds; 0 or less returns at once. Setting the wall clock
    /// meanwhile does not change the duration.
    virtual void sleep(int milliseconds) = 0;

    /// Microseconds since some moment, by a clock that nobody sets. Default: by utcNow().
    virtual std::int64_t steadyTime();

    /// Requests timers of that resolution: 0, or timer_period_refused. Give each granted request
    /// back with endTimerPeriod().
    virtual int beginTimerPeriod(unsigned milliseconds) = 0;
    virtual int endTimerPeriod(unsigned milliseconds) = 0;

  protected:
    // Not virtual: nobody deletes one through this class, and a virtual destructor would destroy
    // the system's own at the end of the process while globals still log.
    ~TimeSource() = default;
};

/// The system's own time source, whichever is in use.
TimeSource &systemTimeSource();

/// The time source in use: the system's, unless setTimeSource() has replaced it.
TimeSource &timeSource();

/// Replaces the time source in use; null restores the system's. The caller owns `source` and keeps
/// it alive while it is in use.
void setTimeSource(TimeSource *source);

/// Calls `action`. std::rand() goes on after it as if nobody had taken a number meanwhile.
void keepRandom(const std::function<void()> &action);

/// The working folder in UTF-8, or an empty text if the system cannot name it or the name does not
/// fit into `capacity` bytes, the terminating zero included.
std::string workingDirectory(std::size_t capacity);

/// Where the running program is. Both are empty if the system cannot say.
struct Program {
    std::string folder; ///< As fopen() takes it.
    std::string name;   ///< Of its file, without ".exe".
};

Program runningProgram();

/// A file's name as fopen() takes it, in UTF-8 for the log.
std::string inUtf8(const std::string &name);

/// Whether a name of a file says from itself where the file is, whatever the working folder.
bool isAbsolute(const std::string &name);

/// Whether a name exists and is a regular file. The name is as fopen() takes it.
bool isFile(const std::string &name);

/// Whether a name exists and is not a regular file but a folder, a device or the like. The name is
/// as fopen() takes it.
bool isOtherThanFile(const std::string &name);

/// Whether a name is that of a pipe, which whoever opens it may have to wait for.
bool isPipe(const std::string &name);

/// What changes when a file is written or replaced; all 0 if there is none.
struct FileStamp {
    std::int64_t time = 0; ///< Of the last writing, in units of the system.
    std::int64_t size = 0;
    std::uint64_t id = 0;

    friend bool operator==(const FileStamp &, const FileStamp &) = default;
};

/// Of the file of that name, which is as fopen() takes it.
FileStamp stampOf(const std::string &name);

/// Whether an open file has been deleted, so that nobody can read what is written to it. Always
/// false on a system that does not delete open files.
bool isDeleted(std::FILE *file);

} // namespace sv::platform
