#include "selvane/platform/process.h"

#include <csignal>

namespace sv::platform {

namespace {

constexpr int stop_signals[] = {SIGINT, SIGTERM, SIGBREAK};
volatile std::sig_atomic_t stop_signal = 0;

/// The system puts its own handler back before it calls this one, but only for this signal.
void rememberStop(int signal) {
    stop_signal = signal;
    releaseStopSignals();
}

} // namespace

// A descriptor that is closed stays so: no library writes to it by its number.
void openStandardDescriptors() {}

void catchStopSignals() {
    for (const int signal : stop_signals) {
        const auto before = std::signal(signal, rememberStop);
        if (before != SIG_DFL)
            std::signal(signal, before);
    }
}

void releaseStopSignals() {
    for (const int signal : stop_signals) {
        const auto before = std::signal(signal, SIG_DFL);
        if (before != rememberStop)
            std::signal(signal, before);
    }
}

int stopSignal() {
    return stop_signal;
}

void forgetStopSignal() {
    stop_signal = 0;
}

} // namespace sv::platform
