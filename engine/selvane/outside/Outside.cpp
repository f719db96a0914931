#include "selvane/outside/Outside.h"

#include "selvane/outside/checksum.h"
#include "selvane/platform/system.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <limits>
#include <utility>

namespace sv {

namespace {

constexpr double longest_sleep = std::numeric_limits<int>::max(); // Milliseconds.

/// Of the file's bytes; "0" if it cannot be read.
std::string fingerprint(const std::string &path) {
    std::ifstream file;
    if (!platform::isOtherThanFile(path)) // A pipe would be waited for.
        file.open(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    return file.bad() || bytes.empty() ? "0" : std::to_string(checksum(bytes));
}

} // namespace

Outside &Outside::getInstance() {
    static Outside &instance = *new Outside;
    return instance;
}

std::uint32_t Outside::askTime(std::uint32_t (*live)()) {
    if (std::this_thread::get_id() != recorded_thread)
        return live() + live_shift;
    if (mode == Mode::REPLAYING)
        return askRecordedTime(live);
    if (last_recorded_time)
        live_shift = *std::exchange(last_recorded_time, std::nullopt) - live();
    const std::uint32_t now = live() + live_shift;
    if (mode == Mode::RECORDING)
        tape.put(Channel::CLOCK, now);
    return now;
}

std::uint32_t Outside::askRecordedTime(std::uint32_t (*live)()) {
    const auto recorded = static_cast<std::uint32_t>(tape.takeTime());
    if (std::exchange(is_joining, false))
        recorded_shift = last_recorded_time.value_or(live() + live_shift) - recorded;
    last_recorded_time = recorded + recorded_shift;
    return *last_recorded_time;
}

std::string Outside::askText(Channel channel, const std::string &now) {
    if (mode == Mode::REPLAYING)
        return tape.takeText(channel);
    if (mode == Mode::RECORDING)
        tape.putText(channel, now);
    return now;
}

std::string Outside::askChangeable(const std::string &name, const std::string &now) {
    std::string recorded = askText(Channel::CONFIG, now);
    if (recorded != now)
        changes.push_back(name);
    return recorded;
}

void Outside::noteFile(const std::string &name, const std::string &path) {
    if (mode == Mode::LIVE)
        return;
    const std::string now = name + " " + fingerprint(path);
    if (askText(Channel::FILES, now) != now)
        changes.push_back(name);
}

void Outside::sleep(int milliseconds) {
    if (is_fast)
        return;
    const auto stretched = static_cast<int>(std::min(milliseconds * stretch, longest_sleep));
    platform::timeSource().sleep(stretched);
    holdBack(std::int64_t{stretched} - milliseconds);
}

void Outside::holdBack(std::int64_t milliseconds) {
    live_shift -= static_cast<std::uint32_t>(milliseconds * 1000);
}

void Outside::setMode(Mode new_mode, bool new_is_fast) {
    takeThread();
    is_joining = new_mode == Mode::REPLAYING;
    mode = new_mode;
    is_fast = new_is_fast;
    tape.clear();
    changes.clear();
}

} // namespace sv
