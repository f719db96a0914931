#include "selvane/platform/system.h"

#include <chrono>

namespace sv::platform {

namespace {

TimeSource *replacement = nullptr;

} // namespace

UtcTime TimeSource::utcNow() {
    using namespace std::chrono;
    static const auto ahead =
        system_clock::now().time_since_epoch() - steady_clock::now().time_since_epoch();
    const sys_time<milliseconds> now(
        floor<milliseconds>(steady_clock::now().time_since_epoch() + ahead));
    const auto day = floor<days>(now);
    const hh_mm_ss time(now - day);
    const auto number = [](auto count) { return static_cast<int>(count); };
    return {number(static_cast<unsigned>(year_month_day(day).day())), number(time.hours().count()),
            number(time.minutes().count()), number(time.seconds().count()),
            number(time.subseconds().count())};
}

TimeSource &timeSource() {
    return replacement ? *replacement : systemTimeSource();
}

void setTimeSource(TimeSource *source) {
    replacement = source;
}

} // namespace sv::platform
