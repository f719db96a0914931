#include "selvane/platform/system.h"

#include "support/environment.h"
#include "support/waitUntil.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <tuple>

namespace sv::platform {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

/// Whether a reading lies in the seconds from `first` to `last`.
bool isBetween(const UtcTime &reading, std::time_t first, std::time_t last) {
    for (std::time_t moment = first; moment <= last; ++moment) {
        const std::tm utc = *std::gmtime(&moment);
        if (std::tie(utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec) ==
            std::tie(reading.day, reading.hour, reading.minute, reading.second))
            return true;
    }
    return false;
}

/// In a time zone in which no one takes UTC for the local time.
class SystemTime : public testing::Test {
  protected:
    void SetUp() override { test::setEnvironment("TZ", "SVT+5"); }
    void TearDown() override { test::clearEnvironment("TZ"); }
};

TEST_F(SystemTime, the_utc_reading_and_the_local_time_are_the_calendars) {
    const std::time_t before = std::time(nullptr);
    const UtcTime reading = timeSource().utcNow();
    std::tm local{};
    ASSERT_TRUE(timeSource().localTime(local));
    // The calendar clock may lag a tick behind the fine one, hence a second more.
    const std::time_t after = std::time(nullptr) + 1;
    EXPECT_TRUE(isBetween(reading, before, after));
    EXPECT_GE(std::mktime(&local), before);
    EXPECT_LE(std::mktime(&local), after);
}

TEST_F(SystemTime, the_local_time_goes_on) {
    std::tm first{};
    ASSERT_TRUE(timeSource().localTime(first));
    std::tm later{};
    EXPECT_TRUE(test::waitUntil(
        [&] { return timeSource().localTime(later) && later.tm_sec != first.tm_sec; }));
    EXPECT_EQ(later.tm_year, first.tm_year);
}

TEST_F(SystemTime, milliseconds_go_on_and_stay_below_a_second) {
    std::set<int> seen;
    EXPECT_TRUE(test::waitUntil([&] {
        seen.insert(timeSource().utcNow().millisecond);
        return seen.size() == 5;
    }));
    EXPECT_GE(*seen.begin(), 0);
    EXPECT_LE(*seen.rbegin(), 999);
}

TEST_F(SystemTime, a_sleep_is_counted_in_milliseconds_and_none_of_less_than_one_waits) {
    for (const int milliseconds : {-1'000'000, -1, 0, 200, 1'000}) {
        const auto start = steady_clock::now();
        timeSource().sleep(milliseconds);
        // From below only, and roughly: a busy machine sleeps as long as it likes.
        EXPECT_GE(steady_clock::now() - start, milliseconds * 1ms / 2) << milliseconds;
    }
}

TEST_F(SystemTime, a_millisecond_of_timer_resolution_is_granted_and_given_back) {
    EXPECT_EQ(timeSource().beginTimerPeriod(1), 0);
    EXPECT_EQ(timeSource().endTimerPeriod(1), 0);
}

std::string utf8(const std::filesystem::path &path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

TEST(WorkingDirectory, is_given_whole_or_not_at_all) {
    // A name outside ASCII, so that bytes and characters are told apart.
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
