#include "selvane/network/NetworkManager.h"

#include "network/NetworkTest.h"
#include "selvane/core/LogManager.h"
#include "selvane/network/message.h"

#include <climits>
#include <memory>

namespace sv {

namespace {

using test::Peer;
using test::Told;
using test::waitUntil;

/// Bytes that begin with that length, whatever it is.
std::string withLength(int length, std::size_t size) {
    std::string bytes(reinterpret_cast<const char *>(&length), sizeof length);
    bytes.resize(size, 'x');
    return bytes;
}

class Network : public test::WorldTest {
  protected:
    Network() {
        EXPECT_EQ(network.startUp(), 0);
        new test::Ear([this](const EventNetwork &event) {
            told.push_back({event.getLabel(), event.getSocketIndex(), event.getBytes()});
            if (on_event)
                on_event(event);
        });
    }

    ~Network() override {
        on_event = nullptr;
        if (network.isStarted())
            network.shutDown();
    }

    /// Begins to serve if need be, and takes that many connections more.
    void join(int count) {
        ASSERT_TRUE(network.isServer() || network.setServer(0) == 0);
        network.setMaxSockets(100);
        for (int i = 0; i < count; ++i) {
            peers.push_back(std::make_unique<Peer>(network.getPort()));
            ASSERT_TRUE(waitUntil([&] { return network.accept() >= 0; }));
        }
        told.clear();
    }

    void arrive(int index, int bytes) {
        ASSERT_TRUE(waitUntil([&] { return network.isData(index) == bytes; }));
    }

    int connectionsAtNextStep() {
        network.endStep();
        return network.getNumConnections();
    }

    /// Sends messages of that letter to the first peer until no more is taken; all that was.
    std::string flood(char letter) {
        const std::string message = makeMessage(std::string(10001, letter));
        std::string taken;
        while (network.send(message, 0) == 0)
            taken += message;
        EXPECT_TRUE(hasLine("Peer of sock index 0 reads too slowly."));
        return taken;
    }

    /// The first peer asks for more than the system takes at once, ends its own side and reads on.
    void expectAllToArrive() {
        peers[0]->stopSending();
        const std::string accepted = flood('a');
        for (int step = 0; step < 3; ++step)
            EXPECT_EQ(connectionsAtNextStep(), 1);
        std::string read;
        EXPECT_TRUE(waitUntil([&] {
            network.endStep();
            return (read += peers[0]->take()).size() >= accepted.size();
        })) << read.size();
        EXPECT_TRUE(read == accepted);
        EXPECT_EQ(connectionsAtNextStep(), 0);
        EXPECT_EQ(told, (Told{{NETWORK_CLOSED, 0, 0}}));
    }

    bool hasLine(const std::string &part) { return logText().find(part) != std::string::npos; }

    NetworkManager &network = NetworkManager::getInstance();
    std::vector<std::unique_ptr<Peer>> peers;
    Told told;
    std::function<void(const EventNetwork &)> on_event;
};

TEST_F(Network, what_is_no_label_and_no_type_is_said) {
    for (const int label : {-2, -1, 0, 3, 4}) {
        const bool is_label = label >= -1 && label <= 3;
        EXPECT_EQ(EventNetwork(label).getLabel(), is_label ? label : UNDEFINED_NETWORK_LABEL);
        EXPECT_EQ(
            hasLine("EventNetwork::setLabel(): Undefined type (" + std::to_string(label) + ").\n"),
            !is_label);
    }
    for (const char *type : {"sv-network", "sv-custom-network", "sv-keyboard-network",
                             "sv-mouse-network", "sv-step"}) {
        const bool is_ours = std::string(type) != "sv-step";
        EXPECT_EQ(network.isValid(type), is_ours);
        EXPECT_EQ(hasLine(std::string("NetworkManager::isValid(): Error! NetworkManager does not "
                                      "handle ") +
                          type + ".\n"),
                  !is_ours);
    }
}

TEST_F(Network, takes_connections_up_to_the_limit) {
    LogManager::getInstance().setLogLevel(15);
    EXPECT_EQ(network.accept(), -2);
    EXPECT_EQ(logLines().back(), "NetworkManager::accept(): Error! Not setup as server.");
    ASSERT_EQ(network.setServer(0), 0);
    EXPECT_EQ(network.accept(), -1);
    EXPECT_EQ(logLines().back(), "NetworkManager::accept(): No new connection. Not blocking.");

    const Peer first(network.getPort());
    ASSERT_TRUE(waitUntil([&] { return network.accept() == 0; }));
    EXPECT_TRUE(hasLine("NetworkManager::accept(): New connection."));
    EXPECT_EQ(told, (Told{{NETWORK_ACCEPTED, 0, 0}}));

    const Peer second(network.getPort());
    EXPECT_TRUE(waitUntil([&] {
        EXPECT_EQ(network.accept(), -1);
        return second.seesEnd();
    }));
    EXPECT_TRUE(hasLine("NetworkManager::accept(): Warning! accept() connection, but at limit (1)."
                        "\n\tUse NM.setMaxSockets() to change.\n"));
    EXPECT_EQ(told.size(), 1U);
    EXPECT_FALSE(first.seesEnd());
}

TEST_F(Network, connects_and_tells_or_says_why_not) {
    ASSERT_EQ(network.setServer(0), 0);
    const int port = network.getPort();
    EXPECT_EQ(network.connect("localhost", port), 0);
    EXPECT_EQ(told, (Told{{NETWORK_CONNECTED, 0, 0}}));
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

TEST_F(Network, a_message_is_told_of_when_all_of_it_is_there) {
    join(1);
    LogManager::getInstance().setLogLevel(15);
    const std::string bytes = makeMessage("sixsix") + makeMessage("");
    const struct {
        std::size_t sent;
        int told;
    } steps[] = {{0, 0}, {3, 0}, {4, 0}, {9, 0}, {10, 1}, {12, 1}, {14, 1}};
    std::size_t so_far = 0;
    for (const auto &step : steps) {
        SCOPED_TRACE(step.sent);
        peers[0]->send(bytes.substr(so_far, step.sent - so_far));
        so_far = step.sent;
        arrive(0, static_cast<int>(step.sent));
        told.clear();
        EXPECT_EQ(network.genDataEvents(0), step.told);
        EXPECT_EQ(told, step.told ? (Told{{NETWORK_MESSAGE, 0, 10}}) : Told());
    }
    EXPECT_EQ(logLines().back(), "NetworkManager::genDataEvents(): have full message (10 bytes).");

    std::string buffer = "untouched";
    for (const std::string body : {"sixsix", ""}) {
        EXPECT_EQ(network.genDataEvents(0), 1);
        EXPECT_EQ(network.receive(buffer, 0), static_cast<int>(body.size()) + MESSAGE_LENGTH_BYTES);
        EXPECT_EQ(buffer, makeMessage(body));
    }
    EXPECT_EQ(network.genDataEvents(0), 0);
    EXPECT_EQ(network.receive(buffer = "untouched", 0), 0);
    EXPECT_EQ(buffer, "untouched");
}

TEST_F(Network, what_is_not_connected_is_said) {
    join(2);
    std::string buffer;
    const struct {
        int answer;
        std::string line;
    } cases[] = {
        {network.isData(5), "isData(): Error! Sock index 5 not connected."},
        {network.isData(-1), "isData(): Error! Sock index -1 not connected."},
        {network.send(makeMessage(""), 2), "send(): Error! Sock index 2 not connected."},
        {network.receive(buffer, 3), "receive(): Error! Sock index 3 not connected."},
        {network.close(4), "close(): sock_index (4) out of range."},
    };
    for (const auto &each : cases) {
        EXPECT_EQ(each.answer, -1) << each.line;
        EXPECT_EQ(logCount("NetworkManager::" + each.line), 1) << each.line;
    }
    EXPECT_EQ(network.genDataEvents(2), 0);
    EXPECT_EQ(logLines().back(), "NetworkManager::" + cases[4].line);
}

TEST_F(Network, a_length_that_makes_no_sense_closes_the_connection_with_one_line) {
    const Told closed{{NETWORK_CLOSED, 0, 0}};
    const struct {
        int length;
        bool is_received;
        Told told;
    } cases[] = {
        {3, true, {{NETWORK_MESSAGE, 0, 3}, {NETWORK_CLOSED, 0, 0}}},
        {3, false, {{NETWORK_MESSAGE, 0, 3}, {NETWORK_CLOSED, 0, 0}}},
        {INT_MIN, false, {{NETWORK_MESSAGE, 0, INT_MIN}, {NETWORK_CLOSED, 0, 0}}},
        {MAX_MESSAGE_BYTES + 1, false, closed},
        {INT_MAX, false, closed},
    };
    for (const auto &each : cases) {
        SCOPED_TRACE(each.length);
        join(2);
        peers[peers.size() - 2]->send(withLength(each.length, 8));
        arrive(0, 8);
        const std::size_t lines = logLines().size();
        on_event = [&](const EventNetwork &event) {
            std::string buffer;
            EXPECT_TRUE(event.getLabel() != NETWORK_MESSAGE || !each.is_received ||
                        network.receive(buffer, 0) == -1);
        };
        EXPECT_GT(network.genDataEvents(0), 0);
        EXPECT_EQ(told, each.told);
        EXPECT_EQ(network.getNumConnections(), 1);
        EXPECT_EQ(logLines().size(), lines + 1);
        network.close(0);
    }
}

TEST_F(Network, the_longest_message_travels_and_a_longer_one_is_refused) {
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

TEST_F(Network, a_slow_reader_gets_whole_messages_or_none) {
    join(1);
    std::string accepted = flood('a');
    std::string read;
    ASSERT_TRUE(waitUntil([&] {
        network.endStep();
        return (read += peers[0]->take()).size() > accepted.size() / 2;
    }));
    accepted += flood('b');
    EXPECT_TRUE(waitUntil([&] {
        network.endStep();
        return (read += peers[0]->take()).size() >= accepted.size();
    })) << read.size();
    EXPECT_TRUE(read == accepted);
    EXPECT_EQ(network.getNumConnections(), 1);
}

TEST_F(Network, a_peer_that_only_stops_sending_gets_the_rest) {
    join(1);
    expectAllToArrive();
}

TEST_F(Network, half_a_message_does_not_cost_a_peer_the_rest) {
    join(1);
    peers[0]->send("abc");
    arrive(0, 3);
    expectAllToArrive();
}

TEST_F(Network, a_peer_that_is_gone_is_closed_when_no_whole_message_waits) {
    const struct {
        std::string sent;
        bool is_reset;
        bool stays;
    } cases[] = {
        {"", false, false},
        {"", true, false},
        {"abc", false, false},
        {withLength(10, 9), false, false},
        {withLength(10, 10), false, true},
        {withLength(10, 15), false, true},
    };
    for (const auto &each : cases) {
        SCOPED_TRACE(each.sent + (each.is_reset ? " reset" : ""));
        join(2);
        Peer &leaving = *peers[peers.size() - 2];
        leaving.send(each.sent);
        if (each.is_reset) {
            EXPECT_EQ(network.send(makeMessage("unread"), 0), 0);
            EXPECT_TRUE(waitUntil([&] { return leaving.waiting() == 10; }));
        }
        arrive(0, static_cast<int>(each.sent.size()));
        leaving.close();
        if (each.stays) {
            // There is no telling when the end has come: whenever it does, the message is there.
            EXPECT_EQ(connectionsAtNextStep(), 2);
            std::string buffer;
            EXPECT_EQ(network.receive(buffer, 0), 10);
        }
        EXPECT_TRUE(waitUntil([&] { return connectionsAtNextStep() == 1; }));
        EXPECT_EQ(told, (Told{{NETWORK_CLOSED, 0, 0}}));
        network.close(0);
    }
}

TEST_F(Network, sending_to_a_peer_that_is_gone_fails_and_ends_the_connection) {
    join(1);
    peers[0]->close();
    EXPECT_TRUE(waitUntil([&] { return network.send(makeMessage("x"), 0) == -1; }));
    EXPECT_TRUE(hasLine("NetworkManager::send(): Error! send() returned:\n\t"));
    EXPECT_EQ(connectionsAtNextStep(), 0);
}

TEST_F(Network, a_connection_that_failed_gives_its_first_reason_and_takes_no_more) {
    join(1);
    peers[0]->send(makeMessage("a message that waits keeps the connection in the list"));
    ASSERT_TRUE(waitUntil([&] { return network.isData(0) > 0; }));
    ASSERT_EQ(network.send(makeMessage("unread"), 0), 0);
    ASSERT_TRUE(waitUntil([&] { return peers[0]->waiting() > 0; }));
    peers[0]->close();
    ASSERT_TRUE(waitUntil([&] { return network.send(makeMessage("x"), 0) == -1; }));
    const std::string reason = logLines().back();
    const std::string longest(MAX_MESSAGE_BYTES - MESSAGE_LENGTH_BYTES, 'x');
    for (int sent = 0; sent <= 2 * MAX_UNSENT_BYTES; sent += MAX_MESSAGE_BYTES) {
        EXPECT_EQ(network.accept(), -1) << "leaves another reason behind";
        EXPECT_EQ(connectionsAtNextStep(), 1);
        EXPECT_EQ(network.send(makeMessage(longest), 0), -1);
        ASSERT_EQ(logLines().back(), reason);
    }
}

TEST_F(Network, who_comes_has_the_index_that_handlers_have_left_it) {
    join(1);
    const std::function<int()> ways[] = {
        [&] { return network.connect(LOOPBACK_ADDRESS, network.getPort()); },
        [&] { // The one that has connected before.
            int index = -1;
            EXPECT_TRUE(
                waitUntil([&] { return (index = network.accept()) >= 0 || !told.empty(); }));
            return index;
        }};
    const struct {
        int closed; // By who is told of the new one.
        int index;
    } cases[] = {{-1, 1}, {0, 0}, {1, -1}};
    for (const auto &each : cases) {
        SCOPED_TRACE(each.closed);
        for (const auto &come : ways) {
            told.clear();
            on_event = [&](const EventNetwork &event) {
                if (event.getLabel() != NETWORK_CLOSED && each.closed >= 0)
                    network.close(each.closed);
            };
            EXPECT_EQ(come(), each.index);
            on_event = nullptr;
            if (each.closed < 0)
                network.close(1);
        }
    }
}

TEST_F(Network, a_handler_may_close_and_connect_as_it_likes) {
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
        return !told.empty();
    }));
    EXPECT_EQ(told,
              (Told{{NETWORK_CLOSED, 1, 0}, {NETWORK_CLOSED, 0, 0}, {NETWORK_CONNECTED, 3, 0}}));
    EXPECT_EQ(network.getNumConnections(), 2) << "one step, one attempt";
    peers[2]->send("abc");
    arrive(0, 3);
    on_event = nullptr;
    platform::closeSocket(hanging_up);
}

TEST_F(Network, shut_down_leaves_every_second_connection_and_the_next_start_drops_it) {
    join(5);
    const int port = network.getPort();
    network.shutDown();
    EXPECT_EQ(told, (Told{{NETWORK_CLOSED, 0, 0}, {NETWORK_CLOSED, 1, 0}, {NETWORK_CLOSED, 2, 0}}));
    EXPECT_FALSE(network.isServer());
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_EQ(waitUntil([&] { return i % 2 == 1 || peers[i]->seesEnd(); }), true) << i;
    EXPECT_FALSE(peers[1]->seesEnd() || peers[3]->seesEnd());

    told.clear();
    ASSERT_EQ(network.startUp(), 0);
    EXPECT_EQ(network.getNumConnections(), 0);
    EXPECT_EQ(network.getMaxSockets(), 1);
    EXPECT_TRUE(waitUntil([&] { return peers[1]->seesEnd() && peers[3]->seesEnd(); }));
    EXPECT_EQ(told, Told());
    EXPECT_EQ(network.setServer(port), 0) << "the port was not given up";
}

} // namespace

} // namespace sv
