#include "selvane/platform/system.h"

#include "selvane/platform/windows/utf8.h"

#include <chrono>
#include <windows.h>
// Needs windows.h before it.
#include <timeapi.h>

namespace sv::platform {

namespace {

static_assert(timer_period_refused == TIMERR_NOCANDO);

constexpr std::size_t longest_path = 32768;
constexpr DWORD no_file = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE;

class SystemTime final : public TimeSource {
  public:
    UtcTime utcNow() override {
        SYSTEMTIME now{};
        GetSystemTime(&now);
        return {now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
    }

    bool localTime(std::tm &local) override {
        const std::time_t now = std::time(nullptr);
        return localtime_s(&local, &now) == 0;
    }

    void sleep(int milliseconds) override {
        if (milliseconds > 0)
            Sleep(static_cast<DWORD>(milliseconds));
    }

    std::int64_t steadyTime() override {
        using namespace std::chrono;
        return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
    }

    int beginTimerPeriod(unsigned milliseconds) override {
        return static_cast<int>(timeBeginPeriod(milliseconds));
    }

    int endTimerPeriod(unsigned milliseconds) override {
        return static_cast<int>(timeEndPeriod(milliseconds));
    }
};

// Exists before main() and after it, since a global's constructor or destructor may log.
constinit SystemTime system_time;

} // namespace

TimeSource &systemTimeSource() {
    return system_time;
}

// PulseAudio, which takes such numbers when it is opened, is not used there.
void keepRandom(const std::function<void()> &action) {
    action();
}

// The C runtime's function stops at 260 characters; a folder's name may be longer.
std::string workingDirectory(std::size_t capacity) {
    std::wstring wide(GetCurrentDirectoryW(0, nullptr), L'\0');
    wide.resize(GetCurrentDirectoryW(static_cast<DWORD>(wide.size()), wide.data()));
    std::string folder = toUtf8(wide);
    return folder.size() < capacity ? folder : std::string();
}

Program runningProgram() {
    std::string path(longest_path, '\0');
    path.resize(GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size())));
    const std::size_t slash = path.rfind('\\');
    if (slash == std::string::npos)
        return {};
    return {path.substr(0, slash), path.substr(slash + 1, path.rfind('.') - slash - 1)};
}

std::string inUtf8(const std::string &name) {
    std::wstring wide(name.size(), L'\0'); // A character takes at least a byte.
    const int length = static_cast<int>(name.size());
    const int written = MultiByteToWideChar(CP_ACP, 0, name.data(), length, wide.data(), length);
    wide.resize(static_cast<std::size_t>(written));
    return toUtf8(wide);
}

bool isAbsolute(const std::string &name) {
    return name.starts_with('/') || name.starts_with('\\') || name.find(':') == 1;
}

bool isFile(const std::string &name) {
    const DWORD attributes = GetFileAttributesA(name.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & no_file) == 0;
}

bool isOtherThanFile(const std::string &name) {
    const DWORD attributes = GetFileAttributesA(name.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & no_file) != 0;
}

// Opening one does not wait here.
bool isPipe(const std::string &) {
    return false;
}

FileStamp stampOf(const std::string &name) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExA(name.c_str(), GetFileExInfoStandard, &data))
        return {};
    const auto both = [](DWORD high, DWORD low) {
        return static_cast<std::int64_t>(std::uint64_t{high} << 32 | low);
    };
    return {both(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime),
            both(data.nFileSizeHigh, data.nFileSizeLow), 0};
}

bool isDeleted(std::FILE *) {
    return false;
}

} // namespace sv::platform
