/// Owns the game's TCP connections and sends "sv-network" events about them: a peer has connected,
/// is gone, or has sent a whole message. It reads no messages itself: an object that gets the event
/// takes the message with receive().
///
/// A connection is identified by its index in the list. Closing one removes it and moves every
/// later one down, so an index is good until the next event with the label NETWORK_CLOSED.
/// message.h says how messages are framed. Only connect() waits for a peer. Game-loop thread only.
#pragma once

#include "selvane/core/Manager.h"
#include "selvane/network/message.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace sv {

class Connection;

/// The default address of a server: only this machine can connect.
inline constexpr char LOOPBACK_ADDRESS[] = "127.0.0.1";

class NetworkManager : public Manager {
  public:
    static NetworkManager &getInstance();
    ~NetworkManager() override;

    /// True for "sv-network" and its custom, keyboard and mouse variants, which only games send.
    bool isValid(const std::string &event_type) const override;

    /// Starts without a server or connections. 0, or -1 with a line in the log.
    int startUp() override;

    /// Stops listening and closes every second connection, beginning with the first, with an event
    /// for each. The others are closed without an event by the next start or at the end of the
    /// process.
    void shutDown() override;

    /// Listens until shut-down on a port of this machine, 1 to 65535, or 0 for any free one.
    /// `address` is an IPv4 or IPv6 address or a host name; "0.0.0.0" means all IPv4 addresses of
    /// this machine, "::" all its addresses. 0, or -1 with a line in the log.
    int setServer(int port, const std::string &address = LOOPBACK_ADDRESS);
    bool isServer() const;

    /// The port that the server listens on, or -1 without a server.
    int getPort() const;

    /// accept() takes no more connections while the list has that many; default 1, reset by
    /// shutDown().
    void setMaxSockets(int new_max_sock) { max_sock = new_max_sock; }
    int getMaxSockets() const { return max_sock; }

    int getNumConnections() const { return static_cast<int>(connections.size()); }

    /// Connects to a server and sends an event (NETWORK_CONNECTED). The index; -1 with a line in
    /// the log on failure, or without one if a handler of the event has closed the connection.
    /// `host` is an IPv4 or IPv6 address or a host name. Blocks the game for at most three seconds
    /// per address, plus the time that looking up the name takes.
    int connect(const std::string &host, int port);

    /// Sends one whole message, made with makeMessage() or in its format. What the system does not
    /// take at once is handed over step by step. 0: the peer gets all of it, after everything sent
    /// before, unless the connection ends first. -1 with a line in the log: the peer gets nothing
    /// of it, because its length field is not its size, it is longer than MAX_MESSAGE_BYTES, the
    /// connection has failed, or more than MAX_UNSENT_BYTES would wait for a peer that does not
    /// read (logged at level 1).
    int send(const std::string &message, int socket_index);

    /// Takes the waiting message, length field included. Its length; 0 if no whole message waits,
    /// with `buffer` unchanged; -1 with a line in the log on an error. A length field below
    /// MESSAGE_LENGTH_BYTES or above MAX_MESSAGE_BYTES is an error that closes the connection.
    int receive(std::string &buffer, int socket_index);

    /// Closes a connection and sends an event (NETWORK_CLOSED), during which it is still in the
    /// list. What waits on it in either direction is lost. 0, or -1 if there is no such connection.
    int close(int socket_index);

    /// Bytes waiting on a connection, or -1.
    int isData(int socket_index) const;

    // Called by the engine.

    /// Takes one waiting connection and sends an event (NETWORK_ACCEPTED). Its index; -1 if none
    /// waits, the list is full, or a handler of the event has closed it; -2 on an error.
    int accept();

    /// If a whole message waits on a connection, sends one event (NETWORK_MESSAGE), however many
    /// wait. The number of objects notified, or -1 on an error. A length field below
    /// MESSAGE_LENGTH_BYTES causes an event too, so that the receiver learns who sent it, and then
    /// the connection is closed. One above MAX_MESSAGE_BYTES closes the connection.
    int genDataEvents(int socket_index);

    /// Ends the network's part of a step: hands over what waits to be sent, and closes every
    /// connection whose peer is gone, unless a whole message still waits on it. Such a message
    /// keeps its connection in the list until it is received or the game closes the connection. A
    /// peer that has only ended its sending side first gets what waits to be sent, unless it takes
    /// none of it for half a minute.
    void endStep();

  private:
    NetworkManager();

    Connection *find(int socket_index);
    const Connection *find(int socket_index) const;
    int indexOf(std::uint64_t id) const;
    int add(std::intptr_t socket, int label);
    int notify(int label, int socket_index, int bytes = 0);
    int closeAndNotify(Connection &connection);
    int refuse(Connection &connection, int length);

    std::intptr_t server_socket; // Wide enough for every system's handles.
    // In ascending order of their ids.
    std::vector<std::unique_ptr<Connection>> connections;
    std::uint64_t next_id = 0;
    int max_sock = 1;
};

} // namespace sv
