#include "platform/system.h"
#include "support/ManualTime.h"
#include "support/environment.h"

#include <chrono>
#include <cstddef>
#include <ctime>
#include <filesystem>
#include <gtest/gtest.h>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace sv::platform {

bool operator==(const UtcTime &a, const UtcTime &b) {
    return a.day == b.day && a.hour == b.hour && a.minute == b.minute && a.second == b.second &&
           a.millisecond == b.millisecond;
}

std::ostream &operator<<(std::ostream &out, const UtcTime &time) {
    return out << "day " << time.day << ", " << time.hour << ':' << time.minute << ':'
               << time.second << '.' << time.millisecond;
}

namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

UtcTime utcOf(std::time_t moment, int millisecond) {
    const std::tm utc = *std::gmtime(&moment);
    return {utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec, millisecond};
}

/// Whether a reading lies in the seconds from `first` to `last`.
bool isBetween(const UtcTime &reading, std::time_t first, std::time_t last) {
    std::time_t moment = first;
    while (moment < last && !(utcOf(moment, reading.millisecond) == reading)) {
        ++moment;
    }
    return utcOf(moment, reading.millisecond) == reading;
}

/// In a time zone in which no one takes UTC for the local time.
class SystemTime : public testing::Test {
  protected:
    void SetUp() override { test::setEnvironment("TZ", "SVT+5"); }
    void TearDown() override { test::clearEnvironment("TZ"); }
};

TEST_F(SystemTime, the_utc_reading_is_the_calendars) {
    const std::time_t before = std::time(nullptr);
    const UtcTime reading = timeSource().utcNow();
    // The calendar clock may lag a tick behind the fine one, hence a second more.
    EXPECT_TRUE(isBetween(reading, before, std::time(nullptr) + 1)) << reading;
}

TEST_F(SystemTime, milliseconds_go_on_and_stay_below_a_second) {
    std::set<int> seen;
    const auto deadline = steady_clock::now() + 10s;
    while (seen.size() < 5 && steady_clock::now() < deadline) {
        seen.insert(timeSource().utcNow().millisecond);
    }
    EXPECT_GE(seen.size(), 5U);
    EXPECT_GE(*seen.begin(), 0);
    EXPECT_LE(*seen.rbegin(), 999);
}

TEST_F(SystemTime, local_time_is_the_calendars) {
    const std::time_t before = std::time(nullptr);
    std::tm local{};
    ASSERT_TRUE(timeSource().localTime(local));
    const std::time_t reading = std::mktime(&local);
    EXPECT_GE(reading, before);
    EXPECT_LE(reading, std::time(nullptr));
}

TEST_F(SystemTime, sleeping_no_time_or_less_returns) {
    timeSource().sleep(0);
    timeSource().sleep(-1);
    timeSource().sleep(-1'000'000);
}

TEST_F(SystemTime, a_sleep_is_counted_in_milliseconds) {
    for (const int milliseconds : {200, 1'000}) {
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

TEST(TimeSource, a_replacement_is_used_until_the_systems_is_put_back) {
    {
        test::ManualTime manual;
        manual.now_ms = 12'345;
        EXPECT_EQ(timeSource().utcNow(), (UtcTime{1, 0, 0, 12, 345}));
        timeSource().sleep(1'000'000);
        EXPECT_EQ(manual.sleeps, std::vector{1'000'000});
    }
    EXPECT_EQ(&timeSource(), &systemTimeSource());
}

class WorkingDirectory : public testing::Test {
  protected:
    void SetUp() override {
        // A name outside ASCII, so that bytes and characters are told apart.
        std::filesystem::create_directories(folder);
        std::filesystem::current_path(folder);
    }

    void TearDown() override {
        std::filesystem::current_path(parent);
        std::filesystem::remove(folder);
    }

    const std::filesystem::path parent = std::filesystem::current_path();
    const std::filesystem::path folder = parent / u8"working-d\u00efrectory";
};

std::string utf8(const std::filesystem::path &path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

TEST_F(WorkingDirectory, is_given_whole_or_not_at_all) {
    const std::string name = utf8(folder);
    EXPECT_EQ(workingDirectory(name.size() + 100), name);
    EXPECT_EQ(workingDirectory(name.size() + 1), name);
    for (const std::size_t capacity :
         {name.size(), name.size() - 1, std::size_t{1}, std::size_t{0}}) {
        EXPECT_EQ(workingDirectory(capacity), "") << capacity << " bytes";
    }
}

} // namespace

} // namespace sv::platform
