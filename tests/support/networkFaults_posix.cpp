#include "support/networkFaults.h"

#include <csignal>
#include <fcntl.h>
#include <linux/filter.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>
#include <utility>

namespace test {

namespace {

bool setSoftLimit(rlim_t files) {
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = files;
    return setrlimit(RLIMIT_NOFILE, &limit) == 0;
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

std::vector<int> socketOptions(sv::platform::Socket socket) {
    constexpr std::pair<int, int> options[] = {
        {SOL_SOCKET, SO_RCVBUF}, {IPPROTO_TCP, TCP_NODELAY}, {SOL_SOCKET, SO_KEEPALIVE}};
    std::vector<int> values;
    for (const auto &[level, option] : options) {
        socklen_t size = sizeof(int);
        getsockopt(static_cast<int>(socket), level, option, &values.emplace_back(), &size);
    }
    return values;
}

void interruptCalls() {
    struct sigaction action {};
    action.sa_handler = [](int /*signal*/) {};
    sigaction(SIGALRM, &action, nullptr);
    constexpr itimerval every_20_ms{{0, 20000}, {0, 20000}};
    setitimer(ITIMER_REAL, &every_20_ms, nullptr);
}

bool allowNoMoreFiles() {
    // The limit is on a descriptor's number, and the next one is the lowest free number.
    const int next = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(next);
    return next >= 0 && setSoftLimit(static_cast<rlim_t>(next));
}

void allowMoreFiles() {
    setSoftLimit(1024);
}

} // namespace test
