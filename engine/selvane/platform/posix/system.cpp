#include "selvane/platform/system.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace sv::platform {

namespace {

constexpr long nanoseconds_per_microsecond = 1000;
constexpr std::int64_t microseconds_per_second = 1'000'000;
constexpr long nanoseconds_per_millisecond = 1'000'000;
constexpr long nanoseconds_per_second = 1'000'000'000;

timespec later(timespec start, int milliseconds) {
    start.tv_sec += milliseconds / 1000;
    start.tv_nsec += milliseconds % 1000 * nanoseconds_per_millisecond;
    if (start.tv_nsec >= nanoseconds_per_second) {
        start.tv_sec += 1;
        start.tv_nsec -= nanoseconds_per_second;
    }
    return start;
}

class SystemTime final : public TimeSource {
  public:
    UtcTime utcNow() override {
        timespec now{};
        clock_gettime(CLOCK_REALTIME, &now);
        std::tm utc{};
        gmtime_r(&now.tv_sec, &utc);
        return {utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec,
                static_cast<int>(now.tv_nsec / nanoseconds_per_millisecond)};
    }

    // Each line of the log asks, so keep the answer for a second.
    bool localTime(std::tm &local) override {
        const std::time_t now = std::time(nullptr);
        if (now != second) {
            if (!localtime_r(&now, &local_second))
                return false;
            second = now;
        }
        local = local_second;
        return true;
    }

    void sleep(int milliseconds) override {
        if (milliseconds <= 0)
            return;
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC, &now);
        // Until a moment, not for a duration: a signal then does not change the total.
        const timespec end = later(now, milliseconds);
        while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &end, nullptr) == EINTR) {
        }
    }

    std::int64_t steadyTime() override {
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC, &now);
        return now.tv_sec * microseconds_per_second + now.tv_nsec / nanoseconds_per_microsecond;
    }

    // Timers are finer than a millisecond here anyway.
    int beginTimerPeriod(unsigned) override { return 0; }
    int endTimerPeriod(unsigned) override { return 0; }

  private:
    std::time_t second = -1;
    std::tm local_second{}; // That second in local time.
};

// Exists before main() and after it, since a global's constructor or destructor may log.
constinit SystemTime system_time;

} // namespace

TimeSource &systemTimeSource() {
    return system_time;
}

void keepRandom(const std::function<void()> &action) {
    alignas(long) std::array<char, 64> meanwhile{};
    char *const kept = initstate(1, meanwhile.data(), meanwhile.size());
    action();
    setstate(kept);
}

std::string workingDirectory(std::size_t capacity) {
    std::string folder(capacity, '\0');
    return getcwd(folder.data(), capacity) ? folder.c_str() : "";
}

// Where the system has no such link, there is no program folder to look in.
Program runningProgram() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return {program.parent_path(), program.filename()};
}

std::string inUtf8(const std::string &name) {
    return name;
}

bool isAbsolute(const std::string &name) {
    return name.starts_with('/');
}

bool isFile(const std::string &name) {
    struct stat status {};
    return stat(name.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool isOtherThanFile(const std::string &name) {
    struct stat status {};
    return stat(name.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
}

bool isPipe(const std::string &name) {
    struct stat status {};
    return stat(name.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

FileStamp stampOf(const std::string &name) {
    struct stat status {};
    if (stat(name.c_str(), &status) != 0)
        return {};
    // Unsigned, as a date may be centuries away.
    const auto seconds = static_cast<std::uint64_t>(status.st_mtim.tv_sec);
    const auto nanoseconds = static_cast<std::uint64_t>(status.st_mtim.tv_nsec);
    return {
        static_cast<std::int64_t>(seconds * std::uint64_t{nanoseconds_per_second} + nanoseconds),
        status.st_size, status.st_ino};
}

bool isDeleted(std::FILE *file) {
    struct stat status {};
    return fstat(fileno(file), &status) == 0 && status.st_nlink == 0;
}

} // namespace sv::platform
