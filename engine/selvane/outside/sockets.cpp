#include "selvane/outside/sockets.h"

#include "selvane/outside/Outside.h"

#include <algorithm>

namespace sv::outside {

namespace {

/// No system has so many sockets: if the game goes on live after a record, what was connected in
/// the record is a closed connection, and nobody else's.
constexpr Socket first_recorded = 1 << 30;

template<typename Call>
auto ask(Call call) {
    return Outside::getInstance().ask(Channel::NETWORK, call);
}

template<typename Call>
Socket askForSocket(Call call) {
    const Socket socket = ask(call);
    const bool is_recorded = Outside::getInstance().isReplaying() && socket >= 0;
    return is_recorded ? first_recorded | (socket & (first_recorded - 1)) : socket;
}

template<typename Call>
int read(void *buffer, int size, Call call) {
    Outside &door = Outside::getInstance();
    const int count = ask(call);
    if (door.getMode() == Outside::Mode::LIVE || count <= 0)
        return count;
    char *bytes = static_cast<char *>(buffer);
    const auto most = static_cast<std::size_t>(std::min(count, size));
    const bool is_live = !door.isReplaying();
    const std::string read =
        door.askText(Channel::NETWORK, is_live ? std::string(bytes, most) : std::string());
    return static_cast<int>(read.copy(bytes, most));
}

} // namespace

int startSockets() {
    return ask(platform::startSockets);
}

int lastSocketError() {
    return ask(platform::lastSocketError);
}

bool isWouldBlock(int code) {
    return platform::isWouldBlock(code);
}

std::string socketErrorText(int code) {
    return platform::socketErrorText(code);
}

Socket listenOn(const std::string &address, int port, int backlog) {
    return askForSocket([&] { return platform::listenOn(address, port, backlog); });
}

int localPort(Socket socket) {
    return ask([=] { return platform::localPort(socket); });
}

Socket acceptFrom(Socket listener) {
    return askForSocket([=] { return platform::acceptFrom(listener); });
}

Socket connectTo(const std::string &host, int port) {
    return askForSocket([&] { return platform::connectTo(host, port); });
}

int waitingBytes(Socket socket) {
    return ask([=] { return platform::waitingBytes(socket); });
}

bool isPeerGone(Socket socket) {
    return ask([=] { return platform::isPeerGone(socket); });
}

bool isPeerDone(Socket socket) {
    return ask([=] { return platform::isPeerDone(socket); });
}

int peek(Socket socket, void *buffer, int size) {
    return read(buffer, size, [=] { return platform::peek(socket, buffer, size); });
}

int receive(Socket socket, void *buffer, int size) {
    return read(buffer, size, [=] { return platform::receive(socket, buffer, size); });
}

int send(Socket socket, const void *buffer, int size) {
    const int taken = ask([=] { return platform::send(socket, buffer, size); });
    return std::min(taken, size);
}

int closeSocket(Socket socket) {
    return ask([=] { return platform::closeSocket(socket); });
}

} // namespace sv::outside
