#include "selvane/network/Connection.h"

#include <utility>

namespace sv {

Connection::Pending Connection::pending() const {
    const int bytes = waitingBytes();
    if (bytes < MESSAGE_LENGTH_BYTES)
        return {bytes < 0 ? Front::UNCOUNTED : Front::INCOMPLETE};

    char field[MESSAGE_LENGTH_BYTES];
    if (outside::peek(socket, field, MESSAGE_LENGTH_BYTES) != MESSAGE_LENGTH_BYTES)
        return {Front::UNREAD};
    const int length = messageLength({field, MESSAGE_LENGTH_BYTES});
    if (length < MESSAGE_LENGTH_BYTES)
        return {Front::TOO_SHORT, length};
    if (length > MAX_MESSAGE_BYTES)
        return {Front::TOO_LONG, length};
    return {bytes < length ? Front::INCOMPLETE : Front::MESSAGE, length};
}

int Connection::receive(std::string &buffer, int length) const {
    buffer.resize(static_cast<std::size_t>(length));
    return outside::receive(socket, buffer.data(), length) == length ? 0 : -1;
}

int Connection::send(const std::string &message) {
    if (failure == 0)
        unsent += message;
    return flush();
}

int Connection::flush() {
    while (!unsent.empty()) {
        const int taken = outside::send(socket, unsent.data(), static_cast<int>(unsent.size()));
        if (taken >= 0) {
            unsent.erase(0, static_cast<std::size_t>(taken));
            drain_clock.reset();
            continue;
        }
        if (outside::isWouldBlock(outside::lastSocketError()))
            return 0;
        failure = outside::lastSocketError();
        unsent.clear();
    }
    return failure == 0 ? 0 : -1;
}

bool Connection::isDead() {
    // In this order, so that a message which arrives between the two calls is not lost.
    return isOpen() && (failure != 0 || (outside::isPeerGone(socket) && !isDrainedByPeer())) &&
           pending().front != Front::MESSAGE;
}

bool Connection::isDrainedByPeer() {
    if (unsent.empty() || !outside::isPeerDone(socket))
        return false;
    if (!drain_clock || drain_clock->split() < 0) // The wall clock was set back.
        drain_clock.emplace();
    return drain_clock->split() < platform::peer_patience_ms * 1000;
}

int Connection::close() {
    unsent.clear();
    // With unread bytes the system would reset the connection, and a peer that still reads would
    // lose what is not delivered yet.
    char unread[4096];
    if (isOpen() && outside::isPeerDone(socket))
        while (outside::receive(socket, unread, sizeof unread) > 0) {
        }
    return isOpen() ? outside::closeSocket(std::exchange(socket, platform::no_socket)) : 0;
}

} // namespace sv
