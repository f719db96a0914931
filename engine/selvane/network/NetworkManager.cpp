#include "selvane/network/NetworkManager.h"

#include "selvane/core/EventNetwork.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/text.h"
#include "selvane/network/Connection.h"
#include "selvane/outside/sockets.h"

#include <algorithm>
#include <utility>

namespace sv {

namespace {

constexpr int default_max_sock = 1;
constexpr int accept_error = -2;
// About as many peers as the steps of a second accept. In a longer queue a peer would wait longer
// than if it were refused and tried again a second later.
constexpr int backlog = 32;

/// Logs what failed, and in a second line the system's reason. Returns -1.
int logSocketFailure(const char *what, int code = outside::lastSocketError()) {
    logFailure("NetworkManager::%s returned:", what);
    return logFailure("\t%d - %s", code, outside::socketErrorText(code).c_str());
}

int logUncounted() {
    return logSocketFailure("isData(): Error! ioctl()/ioctlsocket()");
}

} // namespace

NetworkManager &NetworkManager::getInstance() {
    static NetworkManager &instance = *new NetworkManager;
    return instance;
}

NetworkManager::NetworkManager() : server_socket(platform::no_socket) {
    setType("NetworkManager");
}

NetworkManager::~NetworkManager() = default;

bool NetworkManager::isServer() const {
    return server_socket != platform::no_socket;
}

bool NetworkManager::isValid(const std::string &event_type) const {
    for (const char *valid :
         {NETWORK_EVENT, CUSTOM_NETWORK_EVENT, KEYBOARD_NETWORK_EVENT, MOUSE_NETWORK_EVENT}) {
        if (event_type == valid)
            return true;
    }
    logFailure("NetworkManager::isValid(): Error! NetworkManager does not handle %s.",
               printable(event_type).c_str());
    return false;
}

int NetworkManager::startUp() {
    if (isStarted())
        return refuseSecondStart();
    if (outside::startSockets() != 0)
        return logFailure("NetworkManager::startUp(): Error! WSAStartup() code : %d",
                          outside::lastSocketError());
    connections.clear();
    Manager::startUp();
    logLine(5, "NetworkManager::startUp(): successfully started.");
    return 0;
}

void NetworkManager::shutDown() {
    // Closing moves the later connections down while the index moves up, so every second one stays
    // open. It must stay so: games rely on one event for every second connection, with the indices
    // 0, 1, 2, and on the other peers staying connected until the next start.
    for (int i = 0; i < getNumConnections(); ++i)
        close(i);
    if (isServer())
        outside::closeSocket(server_socket);
    server_socket = platform::no_socket;
    max_sock = default_max_sock;
    Manager::shutDown();
    logLine(5, "NetworkManager::shutDown(): successfully stopped.");
}

int NetworkManager::setServer(int port, const std::string &address) {
    if (!isStarted())
        return logFailure("NetworkManager::setServer(): Error! Not started.");
    if (isServer())
        return logFailure("NetworkManager::setServer(): Error! Server already, on port %d.",
                          getPort());
    server_socket = outside::listenOn(address, port, backlog);
    return isServer() ? 0 : logSocketFailure("setServer(): Error! listen()");
}

int NetworkManager::getPort() const {
    return isServer() ? outside::localPort(server_socket) : -1;
}

int NetworkManager::accept() {
    if (!isServer()) {
        logFailure("NetworkManager::accept(): Error! Not setup as server.");
        return accept_error;
    }
    const platform::Socket accepted = outside::acceptFrom(server_socket);
    if (accepted == platform::no_socket) {
        if (!outside::isWouldBlock(outside::lastSocketError())) {
            logSocketFailure("accept(): Error! accept()");
            return accept_error;
        }
        logLine(15, "NetworkManager::accept(): No new connection. Not blocking.");
        return -1;
    }
    if (getNumConnections() >= max_sock) {
        logLine(1, "NetworkManager::accept(): Warning! accept() connection, but at limit (%d).",
                max_sock);
        logLine(1, "\tUse NM.setMaxSockets() to change.");
        outside::closeSocket(accepted);
        return -1;
    }
    logLine(1, "NetworkManager::accept(): New connection.");
    return add(accepted, NETWORK_ACCEPTED);
}

int NetworkManager::connect(const std::string &host, int port) {
    if (!isStarted())
        return logFailure("NetworkManager::connect(): Error! Not started.");
    const platform::Socket connected = outside::connectTo(host, port);
    if (connected == platform::no_socket)
        return logSocketFailure("connect(): Error! connect()");
    return add(connected, NETWORK_CONNECTED);
}

int NetworkManager::send(const std::string &message, int socket_index) {
    Connection *connection = find(socket_index);
    if (!connection)
        return logFailure("NetworkManager::send(): Error! Sock index %d not connected.",
                          socket_index);
    const auto size =
        static_cast<int>(std::min<std::size_t>(message.size(), MAX_MESSAGE_BYTES + 1));
    if (size < MESSAGE_LENGTH_BYTES || size > MAX_MESSAGE_BYTES || messageLength(message) != size)
        return logFailure("NetworkManager::send(): Error! Not a message of %d to %d bytes.",
                          MESSAGE_LENGTH_BYTES, MAX_MESSAGE_BYTES);
    if (!connection->hasRoomFor(message.size())) {
        logLine(1, "NetworkManager::send(): Warning! Peer of sock index %d reads too slowly.",
                socket_index);
        return -1;
    }
    if (connection->send(message) != 0)
        return logSocketFailure("send(): Error! send()", connection->getFailure());
    return 0;
}

int NetworkManager::receive(std::string &buffer, int socket_index) {
    Connection *connection = find(socket_index);
    if (!connection)
        return logFailure("NetworkManager::receive(): Error! Sock index %d not connected.",
                          socket_index);
    const Connection::Pending pending = connection->pending();
    switch (pending.front) {
    case Connection::Front::UNCOUNTED:
        return logUncounted();
    case Connection::Front::INCOMPLETE:
        return 0;
    case Connection::Front::TOO_SHORT:
    case Connection::Front::TOO_LONG:
        refuse(*connection, pending.length);
        return -1;
    case Connection::Front::UNREAD:
    case Connection::Front::MESSAGE:
        break;
    }
    if (pending.front == Connection::Front::UNREAD ||
        connection->receive(buffer, pending.length) != 0)
        return logSocketFailure("receive(): Error! recv()");
    return pending.length;
}

int NetworkManager::close(int socket_index) {
    Connection *connection = find(socket_index);
    if (!connection)
        return logFailure("NetworkManager::close(): sock_index (%d) out of range.", socket_index);
    closeAndNotify(*connection);
    return 0;
}

int NetworkManager::isData(int socket_index) const {
    const Connection *connection = find(socket_index);
    if (!connection)
        return logFailure("NetworkManager::isData(): Error! Sock index %d not connected.",
                          socket_index);
    const int bytes = connection->waitingBytes();
    return bytes < 0 ? logUncounted() : bytes;
}

int NetworkManager::genDataEvents(int socket_index) {
    Connection *connection = find(socket_index);
    if (!connection)
        return 0;
    const std::uint64_t id = connection->getId();
    const Connection::Pending pending = connection->pending();
    switch (pending.front) {
    case Connection::Front::UNCOUNTED:
        return logUncounted();
    case Connection::Front::UNREAD:
        return logSocketFailure("genDataEvents(): Error! recv()");
    case Connection::Front::INCOMPLETE:
        return 0;
    case Connection::Front::TOO_LONG:
        return refuse(*connection, pending.length);
    case Connection::Front::TOO_SHORT:
    case Connection::Front::MESSAGE:
        break;
    }
    logLine(15, "NetworkManager::genDataEvents(): have full message (%d bytes).", pending.length);
    int notified = notify(NETWORK_MESSAGE, socket_index, pending.length);
    // Close it even if no handler did: otherwise the same event would come again and again.
    connection = find(indexOf(id));
    if (pending.front == Connection::Front::TOO_SHORT && connection)
        notified += refuse(*connection, pending.length);
    return notified;
}

void NetworkManager::endStep() {
    // Connections that handlers make meanwhile wait for the next step: with a peer that accepts and
    // hangs up at once, this step would never end.
    const std::uint64_t first_new_id = next_id;
    for (int i = 0; i < getNumConnections();) {
        Connection &connection = *connections[static_cast<std::size_t>(i)];
        if (connection.getId() >= first_new_id)
            return;
        connection.flush();
        if (connection.isDead())
            closeAndNotify(connection);
        else
            ++i;
    }
}

Connection *NetworkManager::find(int socket_index) {
    return const_cast<Connection *>(std::as_const(*this).find(socket_index));
}

const Connection *NetworkManager::find(int socket_index) const {
    if (socket_index < 0 || socket_index >= getNumConnections())
        return nullptr;
    const Connection &connection = *connections[static_cast<std::size_t>(socket_index)];
    return connection.isOpen() ? &connection : nullptr;
}

int NetworkManager::indexOf(std::uint64_t id) const {
    const auto found =
        std::ranges::find_if(connections, [id](const auto &each) { return each->getId() == id; });
    return found == connections.end() ? -1 : static_cast<int>(found - connections.begin());
}

/// Returns its index after the event, since a handler that closes connections moves or removes it.
int NetworkManager::add(std::intptr_t socket, int label) {
    const std::uint64_t id = next_id++;
    connections.push_back(std::make_unique<Connection>(socket, id));
    notify(label, getNumConnections() - 1);
    return indexOf(id);
}

int NetworkManager::notify(int label, int socket_index, int bytes) {
    const EventNetwork event(label, socket_index, bytes);
    return onEvent(&event);
}

/// Also removes it from the list. Returns the number of objects notified.
int NetworkManager::closeAndNotify(Connection &connection) {
    const std::uint64_t id = connection.getId();
    // A failed close returns -1 and is not worth a line: the socket is lost either way.
    if (connection.close() > 0)
        logSocketFailure("close(): Error! close()");
    const int notified = notify(NETWORK_CLOSED, indexOf(id));
    // By id: a handler may have moved it, or removed it by restarting the manager.
    std::erase_if(connections, [id](const auto &each) { return each->getId() == id; });
    return notified;
}

/// Closes a connection whose peer announced a message of that length. Returns the number of objects
/// notified.
int NetworkManager::refuse(Connection &connection, int length) {
    logFailure("NetworkManager::refuse(): Error! Message length %d, closing sock index %d.", length,
               indexOf(connection.getId()));
    return closeAndNotify(connection);
}

} // namespace sv
