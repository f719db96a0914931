#include "selvane/path/CandidateQueue.h"

#include <gtest/gtest.h>
#include <random>
#include <set>
#include <utility>

namespace sv {
namespace {

/// Compares with a set, in which the best comes first: by the cost, and then by the rank, negative.
void expectSameOrder(float jump) {
    SCOPED_TRACE(jump);
    std::mt19937 random(3);
    CandidateQueue queue(20);
    std::set<std::pair<float, int>> expected;
    const auto is_outdated = [&](std::uint32_t index) {
        return std::ranges::none_of(expected, [&](auto one) { return -one.second == int(index); });
    };
    for (int i = 1; i < 1000; ++i) {
        const float cost = 20 + jump * static_cast<float>(random() % 40) / 8;
        queue.push(cost, static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(i));
        expected.emplace(cost, -i);
        if (random() % 4 == 0)
            expected.erase(std::prev(expected.end()));
        if (random() % 2 == 0 || expected.empty())
            continue;
        const std::pair<float, int> best = *expected.begin();
        ASSERT_EQ(queue.take(is_outdated), static_cast<std::uint32_t>(-best.second));
        expected.erase(best);
    }
}

TEST(CandidateQueue, takes_the_best_however_costs_jump) {
    for (const float jump : {0.0F, 0.01F, 1.0F, 100.0F, 1e6F})
        expectSameOrder(jump);
}

} // namespace
} // namespace sv
