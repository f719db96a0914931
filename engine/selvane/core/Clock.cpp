#include "selvane/core/Clock.h"

#include "selvane/outside/Outside.h"
#include "selvane/platform/system.h"

namespace sv {

namespace {

std::uint32_t systemNow() {
    const platform::UtcTime t = platform::timeSource().utcNow();
    // Unsigned throughout: the product passes 2^32 every 71 minutes, and wraps.
    const auto part = [](int value) { return static_cast<std::uint32_t>(value); };
    const std::uint32_t seconds =
        ((part(t.day) * 24 + part(t.hour)) * 60 + part(t.minute)) * 60 + part(t.second);
    return (seconds * 1000 + part(t.millisecond)) * 1000;
}

std::uint32_t now() {
    return Outside::getInstance().askTime(systemNow);
}

} // namespace

Clock::Clock() : previous_time(now()) {}

unsigned int Clock::delta() {
    const std::uint32_t current = now();
    const std::uint32_t elapsed = current - previous_time;
    previous_time = current;
    return elapsed;
}

int Clock::split() const {
    return static_cast<int>(now() - previous_time);
}

} // namespace sv
