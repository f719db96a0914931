#include "selvane/platform/system.h"

namespace sv::platform {

namespace {

TimeSource *replacement = nullptr;

} // namespace

std::int64_t TimeSource::steadyTime() {
    const UtcTime now = utcNow();
    const std::int64_t seconds =
        ((now.day * std::int64_t{24} + now.hour) * 60 + now.minute) * 60 + now.second;
    return (seconds * 1000 + now.millisecond) * 1000;
}

TimeSource &timeSource() {
    return replacement ? *replacement : systemTimeSource();
}

void setTimeSource(TimeSource *source) {
    replacement = source;
}

} // namespace sv::platform
