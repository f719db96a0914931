#include "selvane/platform/sockets.h"

#include "selvane/platform/windows/utf8.h"

#include <memory>
#include <winsock2.h>
// Needs winsock2.h before it.
#include <mstcpip.h>
#include <ws2tcpip.h>

namespace sv::platform {

namespace {

constexpr int highest_port = 65535;

// A silent peer is asked after 10 s whether it is there; the system gives it up after ten
// questions.
constexpr u_long keepalive_idle_ms = 10000;
constexpr u_long keepalive_interval_ms = 1500;

// The system's own would not last: closing a half-made socket overwrites it.
int last_error = 0;

int fail(int code) {
    last_error = code;
    return -1;
}

int answer(int result) {
    return result == SOCKET_ERROR ? fail(WSAGetLastError()) : result;
}

SOCKET handle(Socket socket) {
    return static_cast<SOCKET>(socket);
}

Socket answerSocket(SOCKET made) {
    return made == INVALID_SOCKET ? fail(WSAGetLastError()) : static_cast<Socket>(made);
}

using AddressList = std::unique_ptr<addrinfo, decltype(&freeaddrinfo)>;

/// The addresses of a host, or null; `flags` are getaddrinfo's.
AddressList resolve(const std::string &host, int port, int flags) {
    AddressList none(nullptr, &freeaddrinfo);
    if (port < 0 || port > highest_port) {
        fail(WSAEINVAL);
        return none;
    }
    addrinfo hints{};
    hints.ai_flags = flags;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo *found = nullptr;
    const int code = getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found);
    if (code != 0) {
        fail(code);
        return none;
    }
    return {found, &freeaddrinfo};
}

void setOption(Socket socket, int level, int option, int value) {
    setsockopt(handle(socket), level, option, reinterpret_cast<const char *>(&value), sizeof value);
}

/// Makes it keep receive_buffer_bytes, send without delay and notice a vanished peer. A system that
/// refuses one of them has its own good default.
void configure(Socket socket) {
    setOption(socket, SOL_SOCKET, SO_RCVBUF, receive_buffer_bytes);
    setOption(socket, IPPROTO_TCP, TCP_NODELAY, 1);
    tcp_keepalive keepalive{1, keepalive_idle_ms, keepalive_interval_ms};
    DWORD unused = 0;
    WSAIoctl(handle(socket), SIO_KEEPALIVE_VALS, &keepalive, sizeof keepalive, nullptr, 0, &unused,
             nullptr, nullptr);
}

Socket open(const addrinfo &address) {
    const Socket made = answerSocket(::socket(address.ai_family, SOCK_STREAM, IPPROTO_TCP));
    configure(made);
    // An IPv6 address for all shall serve IPv4 too, as it does elsewhere.
    setOption(made, IPPROTO_IPV6, IPV6_V6ONLY, 0);
    return made;
}

int stopBlocking(Socket socket) {
    u_long on = 1;
    return answer(ioctlsocket(handle(socket), static_cast<long>(FIONBIO), &on));
}

/// How the connection under way on a non-blocking socket ended: 0, or -1.
int awaitConnection(Socket socket, int timeout_ms) {
    fd_set connected{};
    fd_set failed{};
    FD_SET(handle(socket), &connected);
    FD_SET(handle(socket), &failed);
    timeval timeout{timeout_ms / 1000, timeout_ms % 1000 * 1000};
    const int ready = answer(select(0, nullptr, &connected, &failed, &timeout));
    if (ready <= 0) {
        return ready == 0 ? fail(WSAETIMEDOUT) : -1;
    }
    int code = 0;
    int size = sizeof code;
    if (answer(getsockopt(handle(socket), SOL_SOCKET, SO_ERROR, reinterpret_cast<char *>(&code),
                          &size)) != 0) {
        return -1;
    }
    return code == 0 ? 0 : fail(code);
}

int connectOne(Socket socket, const addrinfo &address, int timeout_ms) {
    if (stopBlocking(socket) != 0) {
        return -1;
    }
    const int size = static_cast<int>(address.ai_addrlen);
    if (connect(handle(socket), address.ai_addr, size) == 0) {
        return 0;
    }
    const int code = WSAGetLastError();
    return code == WSAEWOULDBLOCK ? awaitConnection(socket, timeout_ms) : fail(code);
}

// SO_REUSEADDR stays off: here it would let two programs listen on one port, and a port whose last
// connections fade away is free without it.
int startListening(Socket listener, const addrinfo &address, int backlog) {
    const int size = static_cast<int>(address.ai_addrlen);
    if (answer(bind(handle(listener), address.ai_addr, size)) != 0 ||
        answer(listen(handle(listener), backlog)) != 0) {
        return -1;
    }
    return stopBlocking(listener);
}

int receiveWith(Socket socket, void *buffer, int size, int flags) {
    return answer(recv(handle(socket), static_cast<char *>(buffer), size, flags));
}

} // namespace

int startSockets() {
    WSADATA details{};
    const int code = WSAStartup(MAKEWORD(2, 2), &details);
    return code == 0 ? 0 : fail(code);
}

int lastSocketError() {
    return last_error;
}

bool isWouldBlock(int code) {
    return code == WSAEWOULDBLOCK;
}

std::string socketErrorText(int code) {
    wchar_t *made = nullptr;
    FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, static_cast<DWORD>(code), 0, reinterpret_cast<wchar_t *>(&made), 0, nullptr);
    const std::unique_ptr<wchar_t, decltype(&LocalFree)> message(made, &LocalFree);
    const std::wstring_view text = message != nullptr ? message.get() : L"";
    const std::wstring_view line = text.substr(0, text.find_first_of(L"\r\n"));
    return line.empty() ? "unknown error" : toUtf8(line);
}

Socket listenOn(const std::string &address, int port, int backlog) {
    const AddressList found = resolve(address, port, 0);
    if (found == nullptr) {
        return no_socket;
    }
    const Socket listener = open(*found);
    if (listener == no_socket || startListening(listener, *found, backlog) == 0) {
        return listener;
    }
    closesocket(handle(listener));
    return no_socket;
}

int localPort(Socket socket) {
    sockaddr_storage address{};
    int size = sizeof address;
    if (answer(getsockname(handle(socket), reinterpret_cast<sockaddr *>(&address), &size)) != 0) {
        return -1;
    }
    return ntohs(address.ss_family == AF_INET6
                     ? reinterpret_cast<const sockaddr_in6 &>(address).sin6_port
                     : reinterpret_cast<const sockaddr_in &>(address).sin_port);
}

// Non-blocking without being asked: here an accepted socket has its listener's settings.
Socket acceptFrom(Socket listener) {
    const Socket accepted = answerSocket(accept(handle(listener), nullptr, nullptr));
    configure(accepted);
    return accepted;
}

Socket connectTo(const std::string &host, int port, int timeout_ms) {
    const AddressList found = resolve(host, port, 0);
    for (const addrinfo *address = found.get(); address != nullptr; address = address->ai_next) {
        const Socket socket = open(*address);
        if (socket != no_socket && connectOne(socket, *address, timeout_ms) == 0) {
            return socket;
        }
        if (socket != no_socket) {
            closesocket(handle(socket));
        }
    }
    return no_socket;
}

int waitingBytes(Socket socket) {
    u_long bytes = 0;
    const int asked = answer(ioctlsocket(handle(socket), static_cast<long>(FIONREAD), &bytes));
    return asked == 0 ? static_cast<int>(bytes) : -1;
}

// Wine, unlike Windows, sees the end only when the bytes before it have been taken.
bool isPeerGone(Socket socket, int /*patience_ms*/) {
    WSAPOLLFD asked{handle(socket), POLLRDNORM, 0};
    const int answered = WSAPoll(&asked, 1, 0);
    return socket == no_socket || answered < 0 ||
           (asked.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

bool isPeerDone(Socket socket) {
    WSAPOLLFD asked{handle(socket), POLLRDNORM, 0};
    return WSAPoll(&asked, 1, 0) > 0 && (asked.revents & (POLLHUP | POLLERR | POLLNVAL)) == POLLHUP;
}

int peek(Socket socket, void *buffer, int size) {
    return receiveWith(socket, buffer, size, MSG_PEEK);
}

int receive(Socket socket, void *buffer, int size) {
    return receiveWith(socket, buffer, size, 0);
}

int send(Socket socket, const void *buffer, int size) {
    return answer(::send(handle(socket), static_cast<const char *>(buffer), size, 0));
}

int closeSocket(Socket socket) {
    return answer(closesocket(handle(socket)));
}

} // namespace sv::platform
