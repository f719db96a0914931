#include "selvane/platform/socketCalls.h"

#include <algorithm>
#include <chrono>
#include <poll.h>
#include <sys/ioctl.h>
#include <system_error>
#include <unistd.h>

namespace sv::platform {

namespace {

// After 10 s of silence the system asks whether the peer is there; it gives up after four more
// questions.
constexpr int keepalive_idle_s = 10;
constexpr int keepalive_interval_s = 4;
constexpr int keepalive_probes = 4;

// Three in a row, since one may get lost. To a peer without room for more data the system asks only
// every two minutes or less, so that its last answer is that much older.
constexpr int unanswered_questions = 3;

/// Whether the peer has answered neither questions nor retransmitted data for that long. The system
/// itself retransmits for a quarter of an hour, and sends no keepalive meanwhile. TCP_USER_TIMEOUT
/// would stop that too, but also every connection whose peer answers without reading.
bool isSilent(Handle socket, int patience_ms) {
    tcp_info info{};
    socklen_t size = sizeof info;
    if (getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size) != 0)
        return false;
    return std::max(info.tcpi_retransmits, info.tcpi_probes) >= unanswered_questions &&
           std::min(info.tcpi_last_ack_recv, info.tcpi_last_data_recv) >=
               static_cast<std::uint32_t>(patience_ms);
}

} // namespace

int lastCallError() {
    return errno;
}

int lookupError(int code) {
    return code == EAI_SYSTEM ? errno : code;
}

Socket makeSocket(int family) {
    return answer(::socket(family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

void keepAlive(Handle socket) {
    setOption(socket, SOL_SOCKET, SO_KEEPALIVE, 1);
    setOption(socket, IPPROTO_TCP, TCP_KEEPIDLE, keepalive_idle_s);
    setOption(socket, IPPROTO_TCP, TCP_KEEPINTVL, keepalive_interval_s);
    setOption(socket, IPPROTO_TCP, TCP_KEEPCNT, keepalive_probes);
}

// Without it a server could not restart while its last connections fade away.
int allowPortReuse(Handle listener) {
    const int on = 1;
    return setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
}

int awaitOutcome(Handle socket, int timeout_ms) {
    using namespace std::chrono;
    const auto deadline = steady_clock::now() + milliseconds(timeout_ms);
    pollfd waiting{socket, POLLOUT, 0};
    int ready = poll(&waiting, 1, timeout_ms);
    while (ready < 0 && errno == EINTR) {
        const auto left = duration_cast<milliseconds>(deadline - steady_clock::now());
        ready = poll(&waiting, 1, std::max(static_cast<int>(left.count()), 0));
    }
    return ready;
}

int closeHandle(Handle socket) {
    return close(socket);
}

int startSockets() {
    return 0;
}

bool isWouldBlock(int code) {
    return code == EAGAIN || code == EWOULDBLOCK;
}

std::string socketErrorText(int code) {
    // The negative codes are those of failed name lookups.
    return code < 0 ? gai_strerror(code) : std::system_category().message(code);
}

// Not configured again: here an accepted socket inherits its listener's options.
Socket acceptFrom(Socket listener) {
    return answer(accept4(toHandle(listener), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
}

int waitingBytes(Socket socket) {
    int bytes = 0;
    return answer(ioctl(toHandle(socket), FIONREAD, &bytes)) == 0 ? bytes : -1;
}

bool isPeerGone(Socket socket, int patience_ms) {
    pollfd asked{toHandle(socket), POLLRDHUP, 0};
    // Every event is bad news: the end, an error, or no such socket. no_socket itself has none.
    return socket == no_socket || poll(&asked, 1, 0) > 0 || isSilent(toHandle(socket), patience_ms);
}

bool isPeerDone(Socket socket) {
    pollfd asked{toHandle(socket), POLLRDHUP, 0};
    return poll(&asked, 1, 0) > 0 && asked.revents == POLLRDHUP;
}

} // namespace sv::platform
