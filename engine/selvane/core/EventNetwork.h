/// Sent by the network manager to interested objects: what happened to one connection.
#pragma once

#include "selvane/core/Event.h"

namespace sv {

enum EventNetworkLabel : int {
    UNDEFINED_NETWORK_LABEL = -1,
    NETWORK_ACCEPTED = 0,  ///< A peer has connected to this server.
    NETWORK_CONNECTED = 1, ///< NetworkManager::connect() has reached its host.
    NETWORK_CLOSED = 2,  ///< The connection is about to leave the list; nothing can be sent on it.
    NETWORK_MESSAGE = 3, ///< A whole message waits for NetworkManager::receive().
};

class EventNetwork : public Event {
  public:
    static constexpr const char *TYPE = NETWORK_EVENT;

    /// As setLabel(), setSocketIndex() and setBytes() would make it.
    explicit EventNetwork(int new_label = UNDEFINED_NETWORK_LABEL, int new_socket_index = -1,
                          int new_bytes = 0);

    /// An EventNetworkLabel; any other value is said in the log and becomes the undefined one.
    void setLabel(int new_label);
    int getLabel() const { return label; }

    /// Which connection, as the network manager counts them at that moment; default -1, none.
    void setSocketIndex(int new_socket_index) { socket_index = new_socket_index; }
    int getSocketIndex() const { return socket_index; }

    /// What the waiting message says its length is, its length field included: that many bytes are
    /// there, MESSAGE_LENGTH_BYTES to MAX_MESSAGE_BYTES. A number below that, maybe below 0, is a
    /// peer's nonsense: receive() refuses such a message. 0 for the other labels.
    void setBytes(int new_bytes) { bytes = new_bytes; }
    int getBytes() const { return bytes; }

  private:
    int label = UNDEFINED_NETWORK_LABEL;
    int socket_index;
    int bytes;
};

} // namespace sv
