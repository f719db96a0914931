#include "selvane/core/random.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace sv {

namespace {

/// 0 to 2^30 - 1, whatever RAND_MAX is: it has 15 bits on Windows.
std::int64_t random30() {
    const std::int64_t high = std::rand() & 0x7FFF;
    const std::int64_t low = std::rand() & 0x7FFF;
    return high << 15 | low;
}

} // namespace

int randomInt(int low, int high) {
    const auto [least, most] = std::minmax({std::int64_t{low}, std::int64_t{high}});
    const std::int64_t count = most - least + 1;
    const std::int64_t high_bits = random30() << 30;
    return static_cast<int>(least + (high_bits | random30()) % count);
}

float randomFloat(float low, float high) {
    constexpr double most = (1 << 30) - 1;
    const double part = static_cast<double>(random30()) / most;
    return static_cast<float>(low + (double{high} - low) * part);
}

} // namespace sv
