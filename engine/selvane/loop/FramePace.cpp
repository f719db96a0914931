#include "selvane/loop/FramePace.h"

#include "selvane/core/Clock.h"
#include "selvane/core/LogManager.h"
#include "selvane/outside/Outside.h"

#include <algorithm>

namespace sv {

namespace {

constexpr std::int64_t microseconds_per_millisecond = 1000;
constexpr float network_share = 0.2F;
constexpr float path_share = 0.95F;

} // namespace

std::int64_t FramePace::networkBudget() const {
    return static_cast<std::int64_t>(static_cast<float>(frame_time) * network_share * 1000.0F);
}

int FramePace::pathBudget(int split) const {
    return static_cast<int>(static_cast<float>(remaining(split)) * path_share / 1000.0F);
}

void FramePace::endStep(const Clock &clock, int step_count) {
    const int split = clock.split();
    const std::int64_t intended = remaining(split);
    if (intended > 0) {
        const std::int64_t before = clock.split();
        Outside::getInstance().sleep(static_cast<int>(intended / microseconds_per_millisecond));
        const std::int64_t after = clock.split();
        adjust = std::max<std::int64_t>(after - before - intended, 0);
        return;
    }
    if (adjust == 0 && frame_time > 0 && step_count > 0)
        logLine("GameManager::run(): Can't keep up! frame_time %d ms, split %d ms", frame_time,
                split / 1000);
    adjust = 0;
}

/// Microseconds that are left of the step; below 0 when it is over.
std::int64_t FramePace::remaining(int split) const {
    const std::int64_t frame = frame_time * microseconds_per_millisecond;
    return std::min(frame - split - adjust, frame);
}

} // namespace sv
