#include "selvane/core/Clock.h"

#include "selvane/platform/ManualTime.h"

#include <gtest/gtest.h>

namespace sv {
namespace {

constexpr long long minute_ms = 60'000;
constexpr long long day_ms = 24 * 60 * minute_ms;

TEST(Clock, counts_microseconds_in_32_bits_that_wrap) {
    const struct {
        const char *name;
        long long start_ms, end_ms;
        int split;
        unsigned delta;
    } cases[] = {
        {"into the next day", day_ms - 1, day_ms + 1, 2'000, 2'000},
        {"over the wrap", 3'794'313, 3'794'318, 5'000, 5'000},
        {"40 minutes", 0, 40 * minute_ms, -1'894'967'296, 2'400'000'000U},
        {"72 minutes", 0, 72 * minute_ms, 25'032'704, 25'032'704U},
        {"set back", 5'000, 4'993, -7'000, 4'294'960'296U},
        {"into the next month", 31 * day_ms - 10, 5, 1'659'607'704, 1'659'607'704U},
    };
    ManualTime time;
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        time.now_ms = c.start_ms;
        Clock clock;
        time.now_ms = c.end_ms;
        EXPECT_EQ(clock.split(), c.split);
        EXPECT_EQ(clock.delta(), c.delta);
        time.now_ms += 2;
        EXPECT_EQ(clock.split(), 2'000) << "not restarted";
    }
}

} // namespace
} // namespace sv
