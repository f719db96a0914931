#include "selvane/platform/sockets.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <memory>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

namespace sv::platform {

namespace {

constexpr int highest_port = 65535;

// A silent peer is asked after 10 s whether it is there, and given up after four more questions.
constexpr int keepalive_idle_s = 10;
constexpr int keepalive_interval_s = 4;
constexpr int keepalive_probes = 4;

// That many in a row leave room for one that got lost: to a peer that has no room for more data,
// the system lets up to two minutes go by between two questions, and its answer is that much older.
constexpr int unanswered_questions = 3;

// errno would not last: closing a half-made socket overwrites it.
int last_error = 0;

int fail(int code) {
    last_error = code;
    return -1;
}

int answer(ssize_t result) {
    return result < 0 ? fail(errno) : static_cast<int>(result);
}

int descriptor(Socket socket) {
    return static_cast<int>(socket);
}

using AddressList = std::unique_ptr<addrinfo, decltype(&freeaddrinfo)>;

/// The addresses of a host, or null; `flags` are getaddrinfo's.
AddressList resolve(const std::string &host, int port, int flags) {
    AddressList none(nullptr, &freeaddrinfo);
    if (port < 0 || port > highest_port) {
        fail(EINVAL);
        return none;
    }
    addrinfo hints{};
    hints.ai_flags = flags | AI_NUMERICSERV;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo *found = nullptr;
    const int code = getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found);
    if (code != 0) {
        fail(code == EAI_SYSTEM ? errno : code);
        return none;
    }
    return {found, &freeaddrinfo};
}

void setOption(int socket, int level, int option, int value) {
    setsockopt(socket, level, option, &value, sizeof value);
}

/// A socket that keeps receive_buffer_bytes, sends without delay and notices a vanished peer; with
/// an IPv6 address for all it serves IPv4 too. What a listener accepts has its settings. A system
/// that refuses one of them has its own good default.
int open(const addrinfo &address) {
    const int type = SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC;
    const int made = answer(::socket(address.ai_family, type, 0));
    setOption(made, SOL_SOCKET, SO_RCVBUF, receive_buffer_bytes);
    setOption(made, IPPROTO_TCP, TCP_NODELAY, 1);
    setOption(made, IPPROTO_IPV6, IPV6_V6ONLY, 0);
    setOption(made, SOL_SOCKET, SO_KEEPALIVE, 1);
    setOption(made, IPPROTO_TCP, TCP_KEEPIDLE, keepalive_idle_s);
    setOption(made, IPPROTO_TCP, TCP_KEEPINTVL, keepalive_interval_s);
    setOption(made, IPPROTO_TCP, TCP_KEEPCNT, keepalive_probes);
    return made;
}

int startListening(int listener, const addrinfo &address, int backlog) {
    // Without it a server could not come back while its last connections fade away.
    const int on = 1;
    if (setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) != 0 ||
        bind(listener, address.ai_addr, address.ai_addrlen) != 0) {
        return fail(errno);
    }
    return answer(::listen(listener, backlog));
}

/// How the connection under way on a non-blocking socket ended: 0, or -1.
int awaitConnection(int socket, int timeout_ms) {
    using namespace std::chrono;
    const auto deadline = steady_clock::now() + milliseconds(timeout_ms);
    pollfd waiting{socket, POLLOUT, 0};
    int ready = poll(&waiting, 1, timeout_ms);
    while (ready < 0 && errno == EINTR) {
        const auto left = duration_cast<milliseconds>(deadline - steady_clock::now());
        ready = poll(&waiting, 1, std::max(static_cast<int>(left.count()), 0));
    }
    if (ready <= 0) {
        return fail(ready == 0 ? ETIMEDOUT : errno);
    }
    int code = 0;
    socklen_t size = sizeof code;
    if (getsockopt(socket, SOL_SOCKET, SO_ERROR, &code, &size) != 0) {
        return fail(errno);
    }
    return code == 0 ? 0 : fail(code);
}

int connectOne(int socket, const addrinfo &address, int timeout_ms) {
    if (connect(socket, address.ai_addr, address.ai_addrlen) == 0) {
        return 0;
    }
    return errno == EINPROGRESS ? awaitConnection(socket, timeout_ms) : fail(errno);
}

/// Whether the peer has left the system's questions, and the data sent again and again, without any
/// answer for that long. The system goes on for a quarter of an hour, and sends no keepalive while
/// data is on its way. TCP_USER_TIMEOUT would end that too, but with it every connection whose peer
/// answers and does not read.
bool isSilent(int socket, int patience_ms) {
    tcp_info info{};
    socklen_t size = sizeof info;
    if (getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size) != 0) {
        return false;
    }
    return std::max(info.tcpi_retransmits, info.tcpi_probes) >= unanswered_questions &&
           std::min(info.tcpi_last_ack_recv, info.tcpi_last_data_recv) >=
               static_cast<std::uint32_t>(patience_ms);
}

} // namespace

int startSockets() {
    return 0;
}

int lastSocketError() {
    return last_error;
}

bool isWouldBlock(int code) {
    return code == EAGAIN || code == EWOULDBLOCK;
}

std::string socketErrorText(int code) {
    // The codes of failed name lookups are the negative ones.
    return code < 0 ? gai_strerror(code) : std::system_category().message(code);
}

Socket listenOn(const std::string &address, int port, int backlog) {
    const AddressList found = resolve(address, port, 0);
    if (found == nullptr) {
        return no_socket;
    }
    const int listener = open(*found);
    if (listener < 0 || startListening(listener, *found, backlog) == 0) {
        return listener;
    }
    close(listener);
    return no_socket;
}

int localPort(Socket socket) {
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    if (getsockname(descriptor(socket), reinterpret_cast<sockaddr *>(&address), &size) != 0) {
        return fail(errno);
    }
    return ntohs(address.ss_family == AF_INET6
                     ? reinterpret_cast<const sockaddr_in6 &>(address).sin6_port
                     : reinterpret_cast<const sockaddr_in &>(address).sin_port);
}

Socket acceptFrom(Socket listener) {
    return answer(accept4(descriptor(listener), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
}

Socket connectTo(const std::string &host, int port, int timeout_ms) {
    const AddressList found = resolve(host, port, 0);
    for (const addrinfo *address = found.get(); address != nullptr; address = address->ai_next) {
        const int socket = open(*address);
        if (socket >= 0 && connectOne(socket, *address, timeout_ms) == 0) {
            return socket;
        }
        if (socket >= 0) {
            close(socket);
        }
    }
    return no_socket;
}

int waitingBytes(Socket socket) {
    int bytes = 0;
    return ioctl(descriptor(socket), FIONREAD, &bytes) != 0 ? fail(errno) : bytes;
}

bool isPeerGone(Socket socket, int patience_ms) {
    pollfd asked{descriptor(socket), POLLRDHUP, 0};
    // Any answer is a bad one: the end, an error, or no such socket; no_socket itself gets none.
    return socket == no_socket || poll(&asked, 1, 0) > 0 ||
           isSilent(descriptor(socket), patience_ms);
}

bool isPeerDone(Socket socket) {
    pollfd asked{descriptor(socket), POLLRDHUP, 0};
    return poll(&asked, 1, 0) > 0 && asked.revents == POLLRDHUP;
}

int peek(Socket socket, void *buffer, int size) {
    return answer(recv(descriptor(socket), buffer, static_cast<std::size_t>(size), MSG_PEEK));
}

int receive(Socket socket, void *buffer, int size) {
    return answer(recv(descriptor(socket), buffer, static_cast<std::size_t>(size), 0));
}

int send(Socket socket, const void *buffer, int size) {
    return answer(::send(descriptor(socket), buffer, static_cast<std::size_t>(size), MSG_NOSIGNAL));
}

int closeSocket(Socket socket) {
    return answer(close(descriptor(socket)));
}

} // namespace sv::platform
