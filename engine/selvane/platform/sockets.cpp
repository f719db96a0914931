#include "selvane/platform/sockets.h"

#include "selvane/platform/socketCalls.h"

#include <memory>

namespace sv::platform {

namespace {

constexpr int highest_port = 65535;

int last_error = 0;

using AddressList = std::unique_ptr<addrinfo, decltype(&freeaddrinfo)>;

/// The addresses of a host, or null.
AddressList resolve(const std::string &host, int port) {
    AddressList none(nullptr, &freeaddrinfo);
    if (port < 0 || port > highest_port) {
        fail(invalid_argument);
        return none;
    }
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo *found = nullptr;
    const int code = getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found);
    if (code != 0) {
        fail(lookupError(code));
        return none;
    }
    return {found, &freeaddrinfo};
}

Socket open(const addrinfo &address) {
    const Socket made = makeSocket(address.ai_family);
    configure(toHandle(made));
    // An IPv6 address for all serves IPv4 too.
    setOption(toHandle(made), IPPROTO_IPV6, IPV6_V6ONLY, 0);
    return made;
}

int startListening(Handle listener, const addrinfo &address, int backlog) {
    if (answer(allowPortReuse(listener)) != 0 ||
        answer(bind(listener, address.ai_addr, static_cast<socklen_t>(address.ai_addrlen))) != 0)
        return -1;
    return answer(listen(listener, backlog));
}

/// How a pending connection ended: 0, or -1.
int awaitConnection(Handle socket, int timeout_ms) {
    const int ready = answer(awaitOutcome(socket, timeout_ms));
    if (ready <= 0)
        return ready == 0 ? fail(timed_out) : -1;
    int code = 0;
    socklen_t size = sizeof code;
    if (answer(getsockopt(socket, SOL_SOCKET, SO_ERROR, reinterpret_cast<char *>(&code), &size)) !=
        0)
        return -1;
    return code == 0 ? 0 : fail(code);
}

int connectOne(Handle socket, const addrinfo &address, int timeout_ms) {
    if (connect(socket, address.ai_addr, static_cast<socklen_t>(address.ai_addrlen)) == 0)
        return 0;
    const int code = lastCallError();
    return code == connection_pending ? awaitConnection(socket, timeout_ms) : fail(code);
}

int receiveWith(Socket socket, void *buffer, int size, int flags) {
    return answer(
        recv(toHandle(socket), static_cast<char *>(buffer), static_cast<ByteCount>(size), flags));
}

} // namespace

int fail(int code) {
    last_error = code;
    return -1;
}

int answer(std::ptrdiff_t result) {
    return result < 0 ? fail(lastCallError()) : static_cast<int>(result);
}

void setOption(Handle socket, int level, int option, int value) {
    setsockopt(socket, level, option, reinterpret_cast<const char *>(&value), sizeof value);
}

void configure(Handle socket) {
    setOption(socket, SOL_SOCKET, SO_RCVBUF, receive_buffer_bytes);
    setOption(socket, IPPROTO_TCP, TCP_NODELAY, 1);
    keepAlive(socket);
}

int lastSocketError() {
    return last_error;
}

Socket listenOn(const std::string &address, int port, int backlog) {
    const AddressList found = resolve(address, port);
    if (!found)
        return no_socket;
    const Socket listener = open(*found);
    if (listener == no_socket || startListening(toHandle(listener), *found, backlog) == 0)
        return listener;
    closeHandle(toHandle(listener));
    return no_socket;
}

int localPort(Socket socket) {
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    if (answer(getsockname(toHandle(socket), reinterpret_cast<sockaddr *>(&address), &size)) != 0)
        return -1;
    return ntohs(address.ss_family == AF_INET6
                     ? reinterpret_cast<const sockaddr_in6 &>(address).sin6_port
                     : reinterpret_cast<const sockaddr_in &>(address).sin_port);
}

Socket connectTo(const std::string &host, int port, int timeout_ms) {
    const AddressList found = resolve(host, port);
    for (const addrinfo *address = found.get(); address; address = address->ai_next) {
        const Socket socket = open(*address);
        if (socket == no_socket)
            continue;
        if (connectOne(toHandle(socket), *address, timeout_ms) == 0)
            return socket;
        closeHandle(toHandle(socket));
    }
    return no_socket;
}

int peek(Socket socket, void *buffer, int size) {
    return receiveWith(socket, buffer, size, MSG_PEEK);
}

int receive(Socket socket, void *buffer, int size) {
    return receiveWith(socket, buffer, size, 0);
}

int send(Socket socket, const void *buffer, int size) {
    return answer(::send(toHandle(socket), static_cast<const char *>(buffer),
                         static_cast<ByteCount>(size), send_flags));
}

int closeSocket(Socket socket) {
    return answer(closeHandle(toHandle(socket)));
}

} // namespace sv::platform
