#include "selvane/desk/StepTimes.h"

#include "selvane/platform/system.h"

#include <numeric>
#include <utility>

namespace sv {

namespace {

constexpr std::int64_t period = 500'000; // Microseconds.

} // namespace

void StepTimes::skip() {
    last = platform::timeSource().steadyTime();
}

void StepTimes::end(Piece piece) {
    const std::int64_t before = last;
    skip();
    sums[static_cast<std::size_t>(piece)] += last - before;
    if (piece != Piece::SLEEP)
        return;
    ++steps;
    if (std::accumulate(sums.begin(), sums.end(), std::int64_t{0}) >= period)
        average();
}

void StepTimes::average() {
    const auto count = static_cast<float>(std::exchange(steps, 0));
    rate = count * 1e6F /
           static_cast<float>(std::accumulate(sums.begin(), sums.end(), std::int64_t{0}));
    for (std::size_t i = 0; i < PIECE_COUNT; ++i)
        times[i] = static_cast<float>(std::exchange(sums[i], 0)) / count / 1000;
}

} // namespace sv
