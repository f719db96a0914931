/// Owns the game's TCP connections and turns what happens on them into "sv-network" events: a peer
/// has come, has gone, or a whole message waits. It never reads a message by itself: an object
/// that is told of one takes it with receive().
///
/// A connection is known by its index in the list. Closing one removes it, and every later one
/// moves down by one: an index is good until the next event with the label NETWORK_CLOSED. See
/// message.h for how messages are framed. Nothing here waits for a peer, connect() excepted.
/// Game-loop thread only.
#pragma once

#include "selvane/core/Manager.h"
#include "selvane/network/message.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace sv {

class Connection;

/// The address that a server has unless it asks for another: this machine only.
inline constexpr char LOOPBACK_ADDRESS[] = "127.0.0.1";

class NetworkManager : public Manager {
  public:
    static NetworkManager &getInstance();
    ~NetworkManager() override;

    /// True for "sv-network" and its custom, keyboard and mouse variants, which are the game's own
    /// to send.
    bool isValid(const std::string &event_type) const override;

    /// Begins without server and without connections. 0, or -1 with a line in the log.
    int startUp() override;

    /// Stops listening and closes every second connection, beginning with the first, with an event
    /// for each; the others are dropped without a word by the next start, or by the system with
    /// the process.
    void shutDown() override;

    /// Becomes a server: listens on a port of this machine, 1 to 65535, or 0 for any free one.
    /// `address` is an IPv4 or IPv6 address or a host name; "0.0.0.0" stands for all IPv4 addresses
    /// of this machine, "::" for all. Until shut-down. 0, or -1 with a line in the log.
    int setServer(int port, const std::string &address = LOOPBACK_ADDRESS);
    bool isServer() const;

    /// The port that the server listens on, or -1 if there is none.
    int getPort() const;

    /// The most connections that accept() fills the list with; default 1, and again after
    /// shut-down.
    void setMaxSockets(int new_max_sock) { max_sock = new_max_sock; }
    int getMaxSockets() const { return max_sock; }

    int getNumConnections() const { return static_cast<int>(connections.size()); }

    /// Takes one waiting connection and tells of it (NETWORK_ACCEPTED): its index; -1 if there is
    /// none or no room for it, or if a receiver has closed it already; -2 on an error.
    int accept();

    /// Connects to a server and tells of it (NETWORK_CONNECTED): the index; -1 with a line in the
    /// log, or without one if a receiver has closed the connection already. `host` is an IPv4 or
    /// IPv6 address or a host name. The game stands still meanwhile, for at most
    /// three seconds an address and the time a name takes to look up.
    int connect(const std::string &host, int port);

    /// Sends one whole message, made with makeMessage() or like it. 0: the peer gets all of it,
    /// after everything that was sent before, unless the connection ends first. What the system
    /// does not take at once waits, and is handed over from step to step. -1, with a line in the
    /// log: the peer gets nothing of it, since the length field does not tell the size, the size
    /// is above MAX_MESSAGE_BYTES, the connection has failed, or more than MAX_UNSENT_BYTES would
    /// wait for a peer that does not read (that line at level 1).
    int send(const std::string &message, int socket_index);

    /// Takes the message that waits, length field included: its length; 0 if no whole message
    /// waits, and then `buffer` is as it was; -1, with a line in the log, on an error. A message
    /// whose length field is below MESSAGE_LENGTH_BYTES or above MAX_MESSAGE_BYTES is refused, and
    /// its connection closed.
    int receive(std::string &buffer, int socket_index);

    /// Closes a connection and tells of it (NETWORK_CLOSED): the receivers still find it in the
    /// list. What waits on it in either direction is lost. 0, or -1 if there is no such connection.
    int close(int socket_index);

    /// Bytes that wait on a connection, or -1.
    int isData(int socket_index) const;

    /// If a whole message waits on a connection, tells of it (NETWORK_MESSAGE), once a call. How
    /// many objects were told, or -1 on an error. A length field below MESSAGE_LENGTH_BYTES is
    /// told of too, so that the receiver learns who sent it; the connection does not outlive that
    /// event. One above MAX_MESSAGE_BYTES closes the connection.
    int genDataEvents(int socket_index);

    /// Ends the network's part of a step: hands over what waits to be sent, and closes every
    /// connection whose peer is gone, unless a whole message still waits on it; half a message
    /// does not count. A whole one keeps its connection, and the place that it takes, until it is
    /// received or the game closes the connection. A peer that has only ended its own side gets
    /// what waits to be sent before its connection is closed, unless it takes none of it for
    /// half a minute.
    void endStep();

  private:
    NetworkManager();

    Connection *find(int socket_index);
    const Connection *find(int socket_index) const;
    int indexOf(std::uint64_t id) const;
    int add(std::intptr_t socket, int label);
    int tell(int label, int socket_index, int bytes = 0);
    int closeAndTell(Connection &connection);
    int refuse(Connection &connection, int length);

    std::intptr_t server_socket; // Of a width that fits every system's.
    // Ids rise from front to back.
    std::vector<std::unique_ptr<Connection>> connections;
    std::uint64_t next_id = 0;
    int max_sock = 1;
};

} // namespace sv
