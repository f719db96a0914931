#include "selvane/core/random.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <set>

namespace sv {
namespace {

TEST(Random, numbers_stay_within_their_range) {
    std::set<int> dice;
    for (int i = 0; i < 1000; ++i) {
        dice.insert(randomInt(6, 1));
        const float part = randomFloat(-0.5F, 2);
        EXPECT_TRUE(part >= -0.5F && part <= 2) << part;
    }
    EXPECT_EQ(dice, (std::set{1, 2, 3, 4, 5, 6}));
    bool is_below = false;
    bool is_above = false;
    for (int i = 0; i < 100; ++i) {
        const int any = randomInt(INT_MIN, INT_MAX);
        is_below |= any < INT_MIN / 2;
        is_above |= any > INT_MAX / 2;
    }
    EXPECT_TRUE(is_below && is_above);
    EXPECT_EQ(randomInt(7, 7), 7);
}

TEST(Random, a_seed_repeats_its_numbers) {
    std::srand(3);
    const int number = randomInt(0, 1000000);
    const float part = randomFloat(0, 1);
    std::srand(3);
    EXPECT_EQ(randomInt(0, 1000000), number);
    EXPECT_EQ(randomFloat(0, 1), part);
}

} // namespace
} // namespace sv
