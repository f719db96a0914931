#include "selvane/network/NetworkManager.h"

#include "network/NetworkTest.h"
#include "selvane/core/LogManager.h"
#include "selvane/network/Connection.h"

#include <climits>

namespace sv {

namespace {

using test::Events;
using test::Peer;
using test::waitUntil;

/// `size` bytes with any length in front.
std::string withLength(int length, std::size_t size) {
    std::string bytes(reinterpret_cast<const char *>(&length), sizeof length);
    bytes.resize(size, 'x');
    return bytes;
}

const std::string longest = withLength(MAX_MESSAGE_BYTES, MAX_MESSAGE_BYTES);

struct Network : test::NetworkTest {
    void expectRefused(int answer, const std::string &line, int refusal = -1) {
        EXPECT_EQ(answer, refusal);
        EXPECT_EQ(lastLine(), "NetworkManager::" + line);
    }

    int connectionsAtNextStep() {
        network.endStep();
        return network.getNumConnections();
    }

    /// Sends messages of that letter to the first peer until one is refused; all accepted bytes.
    std::string flood(char letter) {
        const std::string message = makeMessage(std::string(10001, letter));
        std::string taken;
        while (network.send(message, 0) == 0)
            taken += message;
        expectRefused(-1, "send(): Warning! Peer of sock index 0 reads too slowly.");
        return taken;
    }

    /// The first peer sends these bytes, reads too slowly, and then sends no more.
    void expectAllToArriveAfter(const std::string &sent) {
        join(1);
        peers[0]->send(sent);
        arrive(0, sent.size());
        std::string read;
        const auto expect_to_read = [&](std::size_t bytes) {
            EXPECT_TRUE(waitUntil([&] {
                network.endStep();
                return (read += peers[0]->take()).size() >= bytes;
            })) << read.size();
        };
        std::string accepted = flood('a');
        expect_to_read(accepted.size() / 2);
        accepted += flood('b');
        peers[0]->stopSending();
        for (int step = 0; step < 3; ++step)
            EXPECT_EQ(connectionsAtNextStep(), 1);
        expect_to_read(accepted.size());
        EXPECT_TRUE(read == accepted);
        EXPECT_EQ(connectionsAtNextStep(), 0);
        EXPECT_EQ(events, (Events{{NETWORK_CLOSED, 0, 0}}));
    }
};

TEST_F(Network, accepts_connections_up_to_the_limit) {
    LogManager::getInstance().setLogLevel(15);
    expectRefused(network.accept(), "accept(): Error! Not setup as server.", -2);
    ASSERT_EQ(network.setServer(0), 0);
    expectRefused(network.accept(), "accept(): No new connection. Not blocking.");

    const Peer first(network.getPort());
    ASSERT_TRUE(waitUntil([&] { return network.accept() == 0; }));
    EXPECT_EQ(logCount("NetworkManager::accept(): New connection.\n"), 1);
    EXPECT_EQ(events, (Events{{NETWORK_ACCEPTED, 0, 0}}));

    const Peer second(network.getPort());
    EXPECT_TRUE(waitUntil([&] {
        EXPECT_EQ(network.accept(), -1);
        return second.seesEnd();
    }));
    EXPECT_EQ(logCount("NetworkManager::accept(): Warning! accept() connection, but at limit (1)."
                       "\n\tUse NM.setMaxSockets() to change.\n"),
              1);
}

TEST_F(Network, without_files_left_a_peer_waits) {
    ASSERT_EQ(network.setServer(0), 0);
    EXPECT_EQ(network.accept(), -1);
    // A sanitizer itself needs descriptors for each class that it sees for the first time.
    EXPECT_FALSE(platform::socketErrorText(1).empty());
    const Peer peer(network.getPort());
    if (!test::allowNoMoreFiles())
        GTEST_SKIP() << "the system sets no limit";
    EXPECT_TRUE(waitUntil([&] { return network.accept() == -2; }));
    EXPECT_EQ(network.accept(), -2);
    test::allowMoreFiles();
    EXPECT_EQ(logCount("NetworkManager::accept(): Error! accept() returned:\n"), 2);
    EXPECT_EQ(network.accept(), 0);
    EXPECT_FALSE(peer.seesEnd());
}

TEST_F(Network, connects_or_logs_why_not) {
    ASSERT_EQ(network.setServer(0), 0);
    const int port = network.getPort();
    EXPECT_EQ(network.connect("localhost", port), 0);
    EXPECT_EQ(events, (Events{{NETWORK_CONNECTED, 0, 0}}));
    expectRefused(network.setServer(0),
                  "setServer(): Error! Server already, on port " + std::to_string(port) + ".");
    expectRefused(network.startUp(), "startup(): Warning! NetworkManager already started.");

    network.shutDown();
    expectRefused(network.setServer(0), "setServer(): Error! Not started.");
    expectRefused(network.connect("127.0.0.1", port), "connect(): Error! Not started.");
    ASSERT_EQ(network.startUp(), 0);
    EXPECT_EQ(network.connect("127.0.0.1", port), -1) << "the server still listens";
    const int code = platform::lastSocketError();
    EXPECT_EQ(logCount("NetworkManager::connect(): Error! connect() returned:\n\t" +
                       std::to_string(code) + " - " + platform::socketErrorText(code) + "\n"),
              1);
}

TEST_F(Network, an_event_announces_each_whole_message) {
    join(1);
    LogManager::getInstance().setLogLevel(15);
    const std::string bytes = makeMessage("sixsix") + makeMessage("");
    std::size_t sent = 0;
    for (const std::size_t size : {0U, 3U, 4U, 9U, 10U, 12U, 14U}) {
        SCOPED_TRACE(size);
        peers[0]->send(bytes.substr(sent, size - sent));
        sent = size;
        arrive(0, size);
        events.clear();
        EXPECT_EQ(network.genDataEvents(0), size >= 10);
        EXPECT_EQ(events, size >= 10 ? (Events{{NETWORK_MESSAGE, 0, 10}}) : Events());
    }
    EXPECT_EQ(lastLine(), "NetworkManager::genDataEvents(): have full message (10 bytes).");

    std::string buffer;
    for (const std::string &message : {makeMessage("sixsix"), makeMessage("")}) {
        EXPECT_EQ(network.genDataEvents(0), 1);
        EXPECT_EQ(network.receive(buffer, 0), static_cast<int>(message.size()));
        EXPECT_EQ(buffer, message);
    }
    EXPECT_EQ(network.receive(buffer = "untouched", 0), 0);
    EXPECT_EQ(buffer, "untouched");
}

TEST_F(Network, what_is_unknown_is_logged) {
    expectRefused(network.isValid("sv-step"),
                  "isValid(): Error! NetworkManager does not handle sv-step.", false);
    for (const int label : {-2, 4}) {
        EXPECT_EQ(EventNetwork(label).getLabel(), UNDEFINED_NETWORK_LABEL);
        EXPECT_EQ(lastLine(),
                  "EventNetwork::setLabel(): Undefined type (" + std::to_string(label) + ").");
    }
    join(2);
    std::string buffer;
    expectRefused(network.isData(-1), "isData(): Error! Sock index -1 not connected.");
    expectRefused(network.send(makeMessage(""), 2), "send(): Error! Sock index 2 not connected.");
    expectRefused(network.receive(buffer, 3), "receive(): Error! Sock index 3 not connected.");
    expectRefused(network.close(4), "close(): sock_index (4) out of range.");
    EXPECT_EQ(network.genDataEvents(2), 0);
}

TEST_F(Network, a_bad_length_closes_the_connection) {
    for (const int length : {3, INT_MIN, MAX_MESSAGE_BYTES + 1}) {
        SCOPED_TRACE(length);
        join(2);
        peers[peers.size() - 2]->send(withLength(length, 8));
        arrive(0, 8);
        on_event = [&](const EventNetwork &event) {
            std::string buffer; // Reading one of them closes the connection early.
            const bool reads = event.getLabel() == NETWORK_MESSAGE && length == 3;
            EXPECT_EQ(reads ? network.receive(buffer, 0) : -1, -1);
        };
        EXPECT_GT(network.genDataEvents(0), 0);
        Events expected{{NETWORK_CLOSED, 0, 0}};
        if (length < MESSAGE_LENGTH_BYTES)
            expected.insert(expected.begin(), {NETWORK_MESSAGE, 0, length});
        EXPECT_EQ(events, expected);
        EXPECT_EQ(network.getNumConnections(), 1);
        EXPECT_EQ(logCount("NetworkManager::refuse(): Error! Message length " +
                           std::to_string(length) + ", closing sock index 0.\n"),
                  1);
        network.close(0);
    }
}

TEST_F(Network, messages_beyond_the_longest_are_refused) {
    join(1);
    peers[0]->send(longest);
    arrive(0, longest.size());
    std::string buffer;
    EXPECT_EQ(network.receive(buffer, 0), MAX_MESSAGE_BYTES);
    EXPECT_TRUE(buffer == longest);
    EXPECT_EQ(network.send(longest, 0), 0);
    for (const std::string &bad : {withLength(MAX_MESSAGE_BYTES + 1, longest.size() + 1),
                                   std::string("abc"), withLength(4, 5)})
        EXPECT_EQ(network.send(bad, 0), -1) << bad.size();
}

TEST_F(Network, a_peer_that_stops_sending_gets_everything) {
    expectAllToArriveAfter("");
}

TEST_F(Network, half_a_message_keeps_the_rest_coming) {
    expectAllToArriveAfter("abc");
}

TEST_F(Network, peers_that_stop_sending_must_read) {
    const platform::Socket listener = platform::listenOn(LOOPBACK_ADDRESS, 0, 1);
    const Peer peer(platform::localPort(listener));
    platform::Socket accepted = platform::no_socket;
    EXPECT_TRUE(waitUntil(
        [&] { return (accepted = platform::acceptFrom(listener)) != platform::no_socket; }));
    platform::closeSocket(listener);
    Connection connection(accepted, 0);
    peer.stopSending();
    ManualTime &time = session.getTime();
    for (int round = 0; round < 3; ++round) {
        EXPECT_TRUE(waitUntil([&] {
            peer.take();
            connection.flush();
            return connection.hasRoomFor(longest.size());
        }));
        while (connection.hasRoomFor(longest.size()))
            EXPECT_EQ(connection.send(longest), 0);
        EXPECT_FALSE(connection.isDead());
        time.now_ms += platform::peer_patience_ms - 1;
        EXPECT_FALSE(connection.isDead()) << round;
    }
    time.now_ms -= 60'000;
    EXPECT_FALSE(connection.isDead()) << "the time begins anew";
    time.now_ms += platform::peer_patience_ms;
    EXPECT_TRUE(connection.isDead());
}

TEST_F(Network, a_lost_peer_leaves_after_its_messages) {
    join(2);
    peers[0]->send(makeMessage("sixsix") + withLength(10, 9));
    arrive(0, 19);
    peers[0]->close();
    // The end may have arrived or not: the message is there either way.
    EXPECT_EQ(connectionsAtNextStep(), 2);
    std::string buffer;
    EXPECT_EQ(network.receive(buffer, 0), 10);
    EXPECT_TRUE(waitUntil([&] { return connectionsAtNextStep() == 1; }));
    EXPECT_EQ(events, (Events{{NETWORK_CLOSED, 0, 0}}));
}

TEST_F(Network, a_failed_connection_keeps_its_first_reason) {
    join(1);
    const std::string unread = makeMessage("keeps the connection in the list");
    peers[0]->send(unread);
    arrive(0, unread.size());
    ASSERT_EQ(network.send(unread, 0), 0);
    ASSERT_TRUE(waitUntil([&] { return peers[0]->waiting() > 0; }));
    peers[0]->close();
    ASSERT_TRUE(waitUntil([&] { return network.send(unread, 0) == -1; }));
    EXPECT_GT(logCount("NetworkManager::send(): Error! send() returned:\n\t"), 0);
    const std::string reason = lastLine();
    EXPECT_NE(reason.rfind("\t0 - ", 0), 0U) << "no reason";
    for (int sent = 0; sent <= 2 * MAX_UNSENT_BYTES; sent += MAX_MESSAGE_BYTES) {
        EXPECT_EQ(network.accept(), -1) << "changes the system's last error";
        EXPECT_EQ(connectionsAtNextStep(), 1);
        EXPECT_EQ(network.send(longest, 0), -1);
        ASSERT_EQ(lastLine(), reason);
    }
    std::string buffer;
    EXPECT_GT(network.receive(buffer, 0), 0);
    EXPECT_EQ(connectionsAtNextStep(), 0);
}

TEST_F(Network, a_new_index_survives_handlers_that_close) {
    join(1);
    for (const int closed : {0, 1}) {
        on_event = [&](const EventNetwork &event) {
            if (event.getLabel() == NETWORK_CONNECTED)
                network.close(closed);
        };
        EXPECT_EQ(network.connect(LOOPBACK_ADDRESS, network.getPort()), closed == 0 ? 0 : -1);
    }
}

TEST_F(Network, handlers_may_close_and_connect) {
    join(3);
    const platform::Socket hanging_up = platform::listenOn(LOOPBACK_ADDRESS, 0, 1);
    peers[1]->close();
    on_event = [&](const EventNetwork &event) {
        if (event.getLabel() != NETWORK_CLOSED)
            return;
        EXPECT_EQ(network.close(event.getSocketIndex()), -1) << "it is closed already";
        if (event.getSocketIndex() == 1) {
            EXPECT_EQ(network.close(0), 0);
            return;
        }
        network.connect(LOOPBACK_ADDRESS, platform::localPort(hanging_up));
        platform::closeSocket(platform::acceptFrom(hanging_up));
    };
    EXPECT_TRUE(waitUntil([&] {
        network.endStep();
        return !events.empty();
    }));
    EXPECT_EQ(events,
              (Events{{NETWORK_CLOSED, 1, 0}, {NETWORK_CLOSED, 0, 0}, {NETWORK_CONNECTED, 3, 0}}));
    EXPECT_EQ(network.getNumConnections(), 2) << "one step, one attempt";
    peers[2]->send("abc");
    arrive(0, 3);
    platform::closeSocket(hanging_up);
}

TEST_F(Network, every_second_connection_outlives_shut_down) {
    join(5);
    const int port = network.getPort();
    network.shutDown();
    EXPECT_EQ(events,
              (Events{{NETWORK_CLOSED, 0, 0}, {NETWORK_CLOSED, 1, 0}, {NETWORK_CLOSED, 2, 0}}));
    for (const std::size_t i : {0U, 2U, 4U})
        EXPECT_TRUE(waitUntil([&] { return peers[i]->seesEnd(); })) << i;
    EXPECT_FALSE(peers[1]->seesEnd() || peers[3]->seesEnd());

    events.clear();
    ASSERT_EQ(network.startUp(), 0);
    EXPECT_EQ(network.getMaxSockets(), 1);
    EXPECT_TRUE(waitUntil([&] { return peers[1]->seesEnd() && peers[3]->seesEnd(); }));
    EXPECT_EQ(events, Events());
    EXPECT_EQ(network.setServer(port), 0) << "the port was not given up";
}

} // namespace

} // namespace sv
