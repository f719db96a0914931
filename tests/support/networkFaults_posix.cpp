#include "support/networkFaults.h"

#include <csignal>
#include <linux/filter.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/time.h>

namespace test {

namespace {

void interruptEvery(suseconds_t microseconds) {
    const itimerval interval{{0, microseconds}, {0, microseconds}};
    setitimer(ITIMER_REAL, &interval, nullptr);
}

} // namespace

bool dropIncoming(sv::platform::Socket socket) {
    sock_filter drop{BPF_RET | BPF_K, 0, 0, 0};
    const sock_fprog program{1, &drop};
    return setsockopt(static_cast<int>(socket), SOL_SOCKET, SO_ATTACH_FILTER, &program,
                      sizeof program) == 0;
}

void stopSending(sv::platform::Socket socket) {
    shutdown(static_cast<int>(socket), SHUT_WR);
}

void shrinkSendBuffer(sv::platform::Socket socket) {
    constexpr int bytes = 8192;
    setsockopt(static_cast<int>(socket), SOL_SOCKET, SO_SNDBUF, &bytes, sizeof bytes);
}

std::vector<int> socketOptions(sv::platform::Socket socket) {
    std::vector<int> values(3);
    const auto read = [socket](int level, int option, int &value) {
        socklen_t size = sizeof value;
        getsockopt(static_cast<int>(socket), level, option, &value, &size);
    };
    read(SOL_SOCKET, SO_RCVBUF, values[0]);
    read(IPPROTO_TCP, TCP_NODELAY, values[1]);
    read(SOL_SOCKET, SO_KEEPALIVE, values[2]);
    return values;
}

Interruptions::Interruptions() {
    struct sigaction action {};
    action.sa_handler = [](int /*signal*/) {};
    sigaction(SIGALRM, &action, nullptr);
    interruptEvery(20000);
}

Interruptions::~Interruptions() {
    interruptEvery(0);
}

} // namespace test
