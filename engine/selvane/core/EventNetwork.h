/// What happened to one connection. Sent by the network manager to registered objects.
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

    /// An EventNetworkLabel; any other value is logged and becomes UNDEFINED_NETWORK_LABEL.
    void setLabel(int new_label);
    int getLabel() const { return label; }

    /// The connection's index in the network manager at that moment; default -1, none.
    void setSocketIndex(int new_socket_index) { socket_index = new_socket_index; }
    int getSocketIndex() const { return socket_index; }

    /// The length of the waiting message in bytes, its length field included:
    /// MESSAGE_LENGTH_BYTES to MAX_MESSAGE_BYTES. A smaller number, maybe below 0, comes from a
    /// faulty peer: receive() refuses that message. 0 for the other labels.
    void setBytes(int new_bytes) { bytes = new_bytes; }
    int getBytes() const { return bytes; }

  private:
    int label = UNDEFINED_NETWORK_LABEL;
    int socket_index;
    int bytes;
};

} // namespace sv
