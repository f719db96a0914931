/// One TCP connection: the messages that wait in its socket, and the sent bytes that the system has
/// not taken yet.
///
/// Owns the socket and closes it when destroyed. Logs nothing: getFailure() says why sending
/// failed, outside::lastSocketError() why another call did. Game-loop thread only.
#pragma once

#include "selvane/core/Clock.h"
#include "selvane/network/message.h"
#include "selvane/outside/sockets.h"

#include <cstdint>
#include <optional>
#include <string>

namespace sv {

class Connection {
  public:
    /// What the waiting bytes begin with.
    enum class Front {
        INCOMPLETE, ///< Part of a message, or nothing.
        MESSAGE,    ///< A whole message.
        TOO_SHORT,  ///< A length below that of its own field.
        TOO_LONG,   ///< A length above MAX_MESSAGE_BYTES.
        UNCOUNTED,  ///< Counting the waiting bytes failed.
        UNREAD,     ///< Reading the length failed.
    };
    struct Pending {
        Front front = Front::INCOMPLETE;
        int length = 0; ///< The length field's value, once it has arrived.
    };

    /// Takes over the socket. `new_id` identifies the connection while its index changes.
    Connection(platform::Socket new_socket, std::uint64_t new_id)
        : socket(new_socket), id(new_id) {}
    ~Connection() { close(); }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    std::uint64_t getId() const { return id; }
    bool isOpen() const { return socket != platform::no_socket; }

    /// Bytes waiting to be received, or -1.
    int waitingBytes() const { return outside::waitingBytes(socket); }

    Pending pending() const;

    /// Takes `length` bytes. 0, or -1 if fewer wait. REQUIRES: length > 0.
    int receive(std::string &buffer, int length) const;

    /// Whether a message of that many bytes may be sent now.
    bool hasRoomFor(std::size_t size) const { return unsent.size() + size <= MAX_UNSENT_BYTES; }

    /// Sends a message; later calls of flush() hand over what the system does not take at once. 0,
    /// or -1 if the connection has failed, now or earlier. REQUIRES: hasRoomFor(message.size()).
    int send(const std::string &message);

    /// Hands over what the system takes without blocking. 0, or -1 if the connection has failed.
    int flush();

    /// The system's code for the error that ended sending, or 0.
    int getFailure() const { return failure; }

    /// Whether it has failed or its peer is gone, and no whole message waits. A peer that has only
    /// ended its sending side is not gone while it takes some of what is unsent at least every
    /// platform::peer_patience_ms.
    bool isDead();

    /// Drops what is unsent. 0, or the system's answer if it fails to close.
    int close();

  private:
    bool isDrainedByPeer();

    platform::Socket socket;
    std::uint64_t id;
    std::string unsent;
    std::optional<Clock> drain_clock; // Since a peer that has stopped sending last took bytes.
    int failure = 0;
};

} // namespace sv
