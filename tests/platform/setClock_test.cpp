#include "support/setClock.h"

#include "selvane/core/Clock.h"

#include <gtest/gtest.h>

namespace sv {
namespace {

TEST(SetClock, setting_the_clock_moves_no_step) {
    const Clock clock;
    for (const int ahead_s : {1195, -1195}) {
        test::wall_clock_ahead_s = ahead_s;
        EXPECT_GE(clock.split(), 0);
        EXPECT_LT(clock.split(), 100'000'000);
    }
}

} // namespace
} // namespace sv
