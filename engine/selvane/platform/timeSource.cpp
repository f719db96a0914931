#include "selvane/platform/system.h"

namespace sv::platform {

namespace {

TimeSource *replacement = nullptr;

} // namespace

TimeSource &timeSource() {
    return replacement ? *replacement : systemTimeSource();
}

void setTimeSource(TimeSource *source) {
    replacement = source;
}

} // namespace sv::platform
