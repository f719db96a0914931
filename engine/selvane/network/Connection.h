/// One TCP connection: the messages that wait in its socket, and what the system has not taken of
/// those that were sent.
///
/// Owns the socket and closes it with itself. Says nothing in the log: why sending failed is in
/// getFailure(), for the other calls in platform::lastSocketError(). Game-loop thread only.
#pragma once

#include "selvane/core/Clock.h"
#include "selvane/network/message.h"
#include "selvane/platform/sockets.h"

#include <cstdint>
#include <optional>
#include <string>

namespace sv {

class Connection {
  public:
    /// How the bytes that wait begin.
    enum class Front {
        INCOMPLETE, ///< No whole message yet, maybe nothing at all.
        MESSAGE,    ///< A whole message.
        TOO_SHORT,  ///< A length that does not even count its own field.
        TOO_LONG,   ///< A length above MAX_MESSAGE_BYTES.
        UNCOUNTED,  ///< The system would not say how many bytes wait.
        UNREAD,     ///< The system would not show the length.
    };
    struct Waiting {
        Front front = Front::INCOMPLETE;
        int length = 0; ///< What the length field says, once it has arrived.
    };

    /// Takes over the socket. `new_id` tells connections apart whose places in a list change.
    Connection(platform::Socket new_socket, std::uint64_t new_id)
        : socket(new_socket), id(new_id) {}
    ~Connection() { close(); }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    std::uint64_t getId() const { return id; }
    bool isOpen() const { return socket != platform::no_socket; }

    /// Bytes that wait to be received, or -1.
    int waitingBytes() const { return platform::waitingBytes(socket); }

    Waiting waiting() const;

    /// Takes `length` bytes; -1 if they are not there. REQUIRES: length > 0.
    int receive(std::string &buffer, int length) const;

    /// Whether a message of that size may be sent now.
    bool hasRoomFor(std::size_t size) const { return unsent.size() + size <= MAX_UNSENT_BYTES; }

    /// Sends a message; what the system does not take at once, later calls of flush() hand over.
    /// 0, or -1 if the connection has failed, now or earlier. REQUIRES: hasRoomFor its size.
    int send(const std::string &message);

    /// Hands over what the system takes without waiting; 0, or -1 if the connection has failed.
    int flush();

    /// The system's code for what made sending fail for good, or 0.
    int getFailure() const { return failure; }

    /// Whether it has failed or its peer is gone, and no whole message waits. A peer that has only
    /// ended its own side is not gone while it takes what is unsent, some of it at least every
    /// platform::peer_patience_ms.
    bool isDead();

    /// Drops what is unsent. 0, or the system's answer if it refused.
    int close();

  private:
    bool isDrainedByPeer();

    platform::Socket socket;
    std::uint64_t id;
    std::string unsent;
    std::optional<Clock> drain_clock; // Since a peer that is done sending last took something.
    int failure = 0;
};

} // namespace sv
