#include "selvane/platform/process.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace sv::platform {

namespace {

using Handler = void (*)(int);

constexpr int stop_signals[] = {SIGINT, SIGTERM, SIGHUP};
volatile std::sig_atomic_t stop_signal = 0;

Handler handlerOf(int signal) {
    struct sigaction current {};
    sigaction(signal, nullptr, &current);
    return current.sa_handler;
}

/// Only in place of the system's own handler. System calls go on after the signal.
void handle(int signal, Handler handler) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    if (handlerOf(signal) == SIG_DFL)
        sigaction(signal, &action, nullptr);
}

/// Calls only what a handler may call.
void rememberStop(int signal) {
    stop_signal = signal;
    releaseStopSignals();
}

/// Not SIG_IGN, which the programs that a game starts would inherit.
void ignore(int /*signal*/) {}

} // namespace

void openStandardDescriptors() {
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        // It takes the lowest free number, which is this one.
        if (fcntl(standard, F_GETFD) < 0 && errno == EBADF && open("/dev/null", O_RDWR) < 0)
            return;
}

void catchStopSignals() {
    for (const int signal : stop_signals)
        handle(signal, rememberStop);
    handle(SIGPIPE, ignore);
}

void releaseStopSignals() {
    for (const int signal : stop_signals)
        if (handlerOf(signal) == rememberStop)
            std::signal(signal, SIG_DFL);
}

int stopSignal() {
    return stop_signal;
}

void forgetStopSignal() {
    stop_signal = 0;
}

} // namespace sv::platform
