#include "selvane/platform/system.h"

#include "support/EngineTest.h"
#include "support/environment.h"
#include "support/waitUntil.h"

#include <chrono>
#include <ctime>
#include <set>

namespace sv::platform {
namespace {

class System : public test::EngineTest {};

TEST_F(System, time_agrees_with_the_calendar) {
    test::setEnvironment("TZ", "SVT+5"); // Where UTC and local time differ.
    std::set<int> milliseconds;
    std::set<int> seconds;
    EXPECT_TRUE(test::waitUntil([&] {
        const std::time_t now = std::time(nullptr);
        const std::tm utc = *std::gmtime(&now);
        const UtcTime reading = timeSource().utcNow();
        milliseconds.insert(reading.millisecond);
        seconds.insert(reading.second);
        std::tm local{};
        return timeSource().localTime(local) && std::mktime(&local) == now &&
               reading.day == utc.tm_mday && reading.hour == utc.tm_hour &&
               reading.minute == utc.tm_min && reading.second == utc.tm_sec &&
               milliseconds.size() >= 5 && seconds.size() >= 2;
    }));
    EXPECT_GE(*milliseconds.begin(), 0);
    EXPECT_LE(*milliseconds.rbegin(), 999);
}

TEST_F(System, sleeps_last_as_long_as_asked) {
    using namespace std::chrono;
    // All but a thousandth of the sleeps of 999 ms end in another second than they begin in.
    for (const int asked : {-1'000'000, 0, 200, 999}) {
        const auto start = steady_clock::now();
        timeSource().sleep(asked);
        // From below only, and roughly: a busy machine sleeps as long as it likes.
        EXPECT_GE(steady_clock::now() - start, milliseconds(asked) / 2) << asked;
    }
}

TEST_F(System, the_working_directory_is_whole_or_empty) {
    // A name outside ASCII has more bytes than characters.
    std::filesystem::create_directory(u8"d\u00efrectory");
    std::filesystem::current_path(u8"d\u00efrectory");
    const std::u8string name = std::filesystem::current_path().u8string();
    EXPECT_EQ(workingDirectory(name.size() + 1), std::string(name.begin(), name.end()));
    for (const std::size_t capacity : {name.size(), std::size_t{0}})
        EXPECT_EQ(workingDirectory(capacity), "") << capacity << " bytes";
}

} // namespace
} // namespace sv::platform
