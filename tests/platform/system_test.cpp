#include "selvane/platform/system.h"

#include "support/environment.h"
#include "support/waitUntil.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>

namespace sv::platform {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

/// In a time zone where UTC and local time differ.
class SystemTime : public testing::Test {
  protected:
    void SetUp() override { test::setEnvironment("TZ", "SVT+5"); }
    void TearDown() override { test::clearEnvironment("TZ"); }
};

TEST_F(SystemTime, agrees_with_the_calendar) {
    std::set<int> milliseconds;
    EXPECT_TRUE(test::waitUntil([&] {
        const std::time_t now = std::time(nullptr);
        const std::tm utc = *std::gmtime(&now);
        const UtcTime reading = timeSource().utcNow();
        milliseconds.insert(reading.millisecond);
        std::tm local{};
        return timeSource().localTime(local) && std::mktime(&local) == now &&
               reading.day == utc.tm_mday && reading.hour == utc.tm_hour &&
               reading.minute == utc.tm_min && reading.second == utc.tm_sec &&
               milliseconds.size() >= 5;
    }));
    EXPECT_GE(*milliseconds.begin(), 0);
    EXPECT_LE(*milliseconds.rbegin(), 999);
}

TEST_F(SystemTime, goes_on_while_asleep) {
    std::tm first{};
    ASSERT_TRUE(timeSource().localTime(first));
    // All but a thousandth of the sleeps of 999 ms end in another second than they begin in.
    for (const int milliseconds : {-1'000'000, 0, 200, 999}) {
        const auto start = steady_clock::now();
        timeSource().sleep(milliseconds);
        // From below only, and roughly: a busy machine sleeps as long as it likes.
        EXPECT_GE(steady_clock::now() - start, milliseconds * 1ms / 2) << milliseconds;
    }
    std::tm later{};
    ASSERT_TRUE(timeSource().localTime(later));
    EXPECT_NE(later.tm_sec, first.tm_sec);
}

std::string utf8(const std::filesystem::path &path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

TEST(WorkingDirectory, is_whole_or_empty) {
    // A name outside ASCII has more bytes than characters.
    const std::filesystem::path parent = std::filesystem::current_path();
    const std::filesystem::path folder = parent / u8"working-d\u00efrectory";
    std::filesystem::create_directories(folder);
    std::filesystem::current_path(folder);
    const std::string name = utf8(folder);
    EXPECT_EQ(workingDirectory(name.size() + 1), name);
    for (const std::size_t capacity : {name.size(), name.size() - 1, std::size_t{0}})
        EXPECT_EQ(workingDirectory(capacity), "") << capacity << " bytes";
    std::filesystem::current_path(parent);
    std::filesystem::remove(folder);
}

} // namespace
} // namespace sv::platform
