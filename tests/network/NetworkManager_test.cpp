#include "selvane/network/NetworkManager.h"

#include "network/NetworkTest.h"
#include "selvane/core/LogManager.h"
#include "selvane/network/message.h"
#include "selvane/world/spawn.h"
#include "support/limits.h"

#include <climits>
#include <memory>

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

class Network : public test::WorldTest {
  protected:
    Network() {
        EXPECT_EQ(network.startUp(), 0);
        spawn<test::NetworkListener>([this](const EventNetwork &event) {
            events.push_back({event.getLabel(), event.getSocketIndex(), event.getBytes()});
            if (on_event)
                on_event(event);
        });
    }

    ~Network() override {
        on_event = nullptr;
        if (network.isStarted())
            network.shutDown();
    }

    /// Accepts that many more peers.
    void join(int count) {
        ASSERT_TRUE(network.isServer() || network.setServer(0) == 0);
        network.setMaxSockets(100);
        for (int i = 0; i < count; ++i) {
            peers.push_back(std::make_unique<Peer>(network.getPort()));
            ASSERT_TRUE(waitUntil([&] { return network.accept() >= 0; }));
        }
        events.clear();
    }

    void arrive(int index, int bytes) {
        ASSERT_TRUE(waitUntil([&] { return network.isData(index) == bytes; }));
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
        EXPECT_TRUE(hasLine("Peer of sock index 0 reads too slowly."));
        return taken;
    }

    /// A peer sends these bytes and then no more; it gets more than the system takes at once.
    void expectAllToArriveAfter(const std::string &sent) {
        join(1);
        peers[0]->send(sent);
        arrive(0, static_cast<int>(sent.size()));
        peers[0]->stopSending();
        const std::string accepted = flood('a');
        for (int step = 0; step < 3; ++step)
            EXPECT_EQ(connectionsAtNextStep(), 1);
        expectToRead(accepted);
        EXPECT_EQ(connectionsAtNextStep(), 0);
        EXPECT_EQ(events, (Events{{NETWORK_CLOSED, 0, 0}}));
    }

    /// Runs steps until the first peer has read exactly that.
    void expectToRead(const std::string &bytes, std::string read = "") {
        EXPECT_TRUE(waitUntil([&] {
            network.endStep();
            return (read += peers[0]->take()).size() >= bytes.size();
        })) << read.size();
        EXPECT_TRUE(read == bytes);
    }

    bool hasLine(const std::string &part) { return logText().find(part) != std::string::npos; }

    NetworkManager &network = NetworkManager::getInstance();
    std::vector<std::unique_ptr<Peer>> peers;
    Events events;
    std::function<void(const EventNetwork &)> on_event;
};

TEST_F(Network, unknown_labels_and_types_are_logged) {
    const std::size_t lines = logLines().size();
    for (const int label : {-1, 0, 3})
        EXPECT_EQ(EventNetwork(label).getLabel(), label);
    for (const char *type :
         {"sv-network", "sv-custom-network", "sv-keyboard-network", "sv-mouse-network"})
        EXPECT_TRUE(network.isValid(type));
    EXPECT_EQ(logLines().size(), lines);
    EXPECT_EQ(EventNetwork(-2).getLabel(), UNDEFINED_NETWORK_LABEL);
    EXPECT_EQ(EventNetwork(4).getLabel(), UNDEFINED_NETWORK_LABEL);
    EXPECT_FALSE(network.isValid("sv-step"));
    expectLogged({"EventNetwork::setLabel(): Undefined type (-2).",
                  "EventNetwork::setLabel(): Undefined type (4).",
                  "NetworkManager::isValid(): Error! NetworkManager does not handle sv-step."});
}

TEST_F(Network, accepts_connections_up_to_the_limit) {
    LogManager::getInstance().setLogLevel(15);
    EXPECT_EQ(network.accept(), -2);
    EXPECT_EQ(logLines().back(), "NetworkManager::accept(): Error! Not setup as server.");
    ASSERT_EQ(network.setServer(0), 0);
    EXPECT_EQ(network.accept(), -1);
    EXPECT_EQ(logLines().back(), "NetworkManager::accept(): No new connection. Not blocking.");

    const Peer first(network.getPort());
    ASSERT_TRUE(waitUntil([&] { return network.accept() == 0; }));
    EXPECT_TRUE(hasLine("NetworkManager::accept(): New connection."));
    EXPECT_EQ(events, (Events{{NETWORK_ACCEPTED, 0, 0}}));

    const Peer second(network.getPort());
    EXPECT_TRUE(waitUntil([&] {
        EXPECT_EQ(network.accept(), -1);
        return second.seesEnd();
    }));
    EXPECT_TRUE(hasLine("NetworkManager::accept(): Warning! accept() connection, but at limit (1)."
                        "\n\tUse NM.setMaxSockets() to change.\n"));
    EXPECT_EQ(events.size(), 1U);
    EXPECT_FALSE(first.seesEnd());
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
    EXPECT_EQ(logCount("NetworkManager::accept(): Error! accept() returned:"), 2);
    EXPECT_EQ(network.accept(), 0);
    EXPECT_FALSE(peer.seesEnd());
}

TEST_F(Network, connects_or_logs_why_not) {
    ASSERT_EQ(network.setServer(0), 0);
    const int port = network.getPort();
    EXPECT_EQ(network.connect("localhost", port), 0);
    EXPECT_EQ(events, (Events{{NETWORK_CONNECTED, 0, 0}}));
    EXPECT_EQ(network.setServer(0), -1) << "a server already";
    EXPECT_EQ(network.startUp(), -1);
    EXPECT_EQ(logLines().back(),
              "NetworkManager::startup(): Warning! NetworkManager already started.");

    network.shutDown();
    EXPECT_EQ(network.connect("127.0.0.1", port), -1);
    EXPECT_EQ(network.setServer(0), -1) << "not started";
    ASSERT_EQ(network.startUp(), 0);
    EXPECT_EQ(network.connect("127.0.0.1", port), -1) << "the server still listens";
    const std::string code = std::to_string(platform::lastSocketError());
    EXPECT_TRUE(hasLine("NetworkManager::connect(): Error! connect() returned:\n\t" + code + " - " +
                        platform::socketErrorText(platform::lastSocketError()) + "\n"));
}

TEST_F(Network, an_event_announces_each_whole_message) {
    join(1);
    LogManager::getInstance().setLogLevel(15);
    const std::string bytes = makeMessage("sixsix") + makeMessage("");
    std::size_t sent = 0;
    for (const std::size_t size : {0, 3, 4, 9, 10, 12, 14}) {
        SCOPED_TRACE(size);
        peers[0]->send(bytes.substr(sent, size - sent));
        sent = size;
        arrive(0, static_cast<int>(size));
        events.clear();
        EXPECT_EQ(network.genDataEvents(0), size >= 10);
        EXPECT_EQ(events, size >= 10 ? (Events{{NETWORK_MESSAGE, 0, 10}}) : Events());
    }
    EXPECT_EQ(logLines().back(), "NetworkManager::genDataEvents(): have full message (10 bytes).");

    std::string buffer;
    for (const std::string body : {"sixsix", ""}) {
        EXPECT_EQ(network.genDataEvents(0), 1);
        EXPECT_EQ(network.receive(buffer, 0), static_cast<int>(body.size()) + MESSAGE_LENGTH_BYTES);
        EXPECT_EQ(buffer, makeMessage(body));
    }
    EXPECT_EQ(network.genDataEvents(0), 0);
    EXPECT_EQ(network.receive(buffer = "untouched", 0), 0);
    EXPECT_EQ(buffer, "untouched");
}

TEST_F(Network, unknown_indices_are_logged) {
    join(2);
    std::string buffer;
    EXPECT_EQ(network.isData(5), -1);
    EXPECT_EQ(network.isData(-1), -1);
    EXPECT_EQ(network.send(makeMessage(""), 2), -1);
    EXPECT_EQ(network.receive(buffer, 3), -1);
    EXPECT_EQ(network.close(4), -1);
    EXPECT_EQ(network.genDataEvents(2), 0);
    expectLogged({"NetworkManager::isData(): Error! Sock index 5 not connected.",
                  "NetworkManager::isData(): Error! Sock index -1 not connected.",
                  "NetworkManager::send(): Error! Sock index 2 not connected.",
                  "NetworkManager::receive(): Error! Sock index 3 not connected.",
                  "NetworkManager::close(): sock_index (4) out of range."});
    EXPECT_EQ(logLines().back(), "NetworkManager::close(): sock_index (4) out of range.");
}

TEST_F(Network, a_bad_length_closes_the_connection) {
    const struct {
        int length;
        bool is_received;
        Events events;
    } cases[] = {
        {3, true, {{NETWORK_MESSAGE, 0, 3}, {NETWORK_CLOSED, 0, 0}}},
        {INT_MIN, false, {{NETWORK_MESSAGE, 0, INT_MIN}, {NETWORK_CLOSED, 0, 0}}},
        {MAX_MESSAGE_BYTES + 1, false, {{NETWORK_CLOSED, 0, 0}}},
        {INT_MAX, false, {{NETWORK_CLOSED, 0, 0}}},
    };
    for (const auto &each : cases) {
        SCOPED_TRACE(each.length);
        join(2);
        peers[peers.size() - 2]->send(withLength(each.length, 8));
        arrive(0, 8);
        const std::size_t lines = logLines().size();
        on_event = [&](const EventNetwork &event) {
            std::string buffer;
            if (event.getLabel() == NETWORK_MESSAGE && each.is_received) {
                if (event.getLabel() == NETWORK_MESSAGE && each.is_received) {
                    EXPECT_EQ(network.receive(buffer, 0), -1);
                }
            }
        };
        EXPECT_GT(network.genDataEvents(0), 0);
        EXPECT_EQ(events, each.events);
        EXPECT_EQ(network.getNumConnections(), 1);
        EXPECT_EQ(logLines().size(), lines + 1);
        network.close(0);
    }
}

TEST_F(Network, messages_beyond_the_longest_are_refused) {
    join(1);
    ASSERT_EQ(network.connect("127.0.0.1", network.getPort()), 1);
    ASSERT_TRUE(waitUntil([&] { return network.accept() == 2; }));
    const std::string longest =
        makeMessage(std::string(MAX_MESSAGE_BYTES - MESSAGE_LENGTH_BYTES, 'x'));
    ASSERT_EQ(network.send(longest, 1), 0);
    arrive(2, MAX_MESSAGE_BYTES);
    std::string buffer;
    EXPECT_EQ(network.receive(buffer, 2), MAX_MESSAGE_BYTES);
    EXPECT_TRUE(buffer == longest);
    for (const std::string &bad : {makeMessage(longest), std::string("abc"), withLength(4, 5)})
        EXPECT_EQ(network.send(bad, 1), -1) << bad.size();
}

TEST_F(Network, a_slow_reader_gets_whole_messages) {
    join(1);
    std::string accepted = flood('a');
    std::string read;
    ASSERT_TRUE(waitUntil([&] {
        network.endStep();
        return (read += peers[0]->take()).size() > accepted.size() / 2;
    }));
    accepted += flood('b');
    expectToRead(accepted, read);
    EXPECT_EQ(network.getNumConnections(), 1);
}

TEST_F(Network, a_peer_that_stops_sending_gets_everything) {
    expectAllToArriveAfter("");
}

TEST_F(Network, half_a_message_keeps_the_rest_coming) {
    expectAllToArriveAfter("abc");
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
    peers[0]->send(makeMessage("a message that waits keeps the connection in the list"));
    ASSERT_TRUE(waitUntil([&] { return network.isData(0) > 0; }));
    ASSERT_EQ(network.send(makeMessage("unread"), 0), 0);
    ASSERT_TRUE(waitUntil([&] { return peers[0]->waiting() > 0; }));
    peers[0]->close();
    ASSERT_TRUE(waitUntil([&] { return network.send(makeMessage("x"), 0) == -1; }));
    EXPECT_TRUE(hasLine("NetworkManager::send(): Error! send() returned:\n\t"));
    const std::string reason = logLines().back();
    EXPECT_NE(reason.rfind("\t0 - ", 0), 0U) << "no reason";
    const std::string longest(MAX_MESSAGE_BYTES - MESSAGE_LENGTH_BYTES, 'x');
    for (int sent = 0; sent <= 2 * MAX_UNSENT_BYTES; sent += MAX_MESSAGE_BYTES) {
        EXPECT_EQ(network.accept(), -1) << "changes the system's last error";
        EXPECT_EQ(connectionsAtNextStep(), 1);
        EXPECT_EQ(network.send(makeMessage(longest), 0), -1);
        ASSERT_EQ(logLines().back(), reason);
    }
    std::string buffer;
    EXPECT_GT(network.receive(buffer, 0), 0);
    EXPECT_EQ(connectionsAtNextStep(), 0);
}

TEST_F(Network, a_new_index_survives_handlers_that_close) {
    join(1);
    const auto connect_and_close = [&](int closed) {
        on_event = [&](const EventNetwork &event) {
            if (event.getLabel() == NETWORK_CONNECTED)
                network.close(closed);
        };
        return network.connect(LOOPBACK_ADDRESS, network.getPort());
    };
    EXPECT_EQ(connect_and_close(0), 0);
    EXPECT_EQ(connect_and_close(1), -1);
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
    on_event = nullptr;
    platform::closeSocket(hanging_up);
}

TEST_F(Network, every_second_connection_outlives_shut_down) {
    join(5);
    const int port = network.getPort();
    network.shutDown();
    EXPECT_EQ(events,
              (Events{{NETWORK_CLOSED, 0, 0}, {NETWORK_CLOSED, 1, 0}, {NETWORK_CLOSED, 2, 0}}));
    EXPECT_FALSE(network.isServer());
    for (const std::size_t i : {0, 2, 4})
        EXPECT_TRUE(waitUntil([&] { return peers[i]->seesEnd(); })) << i;
    EXPECT_FALSE(peers[1]->seesEnd() || peers[3]->seesEnd());

    events.clear();
    ASSERT_EQ(network.startUp(), 0);
    EXPECT_EQ(network.getNumConnections(), 0);
    EXPECT_EQ(network.getMaxSockets(), 1);
    EXPECT_TRUE(waitUntil([&] { return peers[1]->seesEnd() && peers[3]->seesEnd(); }));
    EXPECT_EQ(events, Events());
    EXPECT_EQ(network.setServer(port), 0) << "the port was not given up";
}

} // namespace

} // namespace sv
