// The network's part of a step of the game loop.

#include "network/NetworkTest.h"
#include "selvane/core/Config.h"
#include "selvane/loop/GameManager.h"
#include "selvane/platform/ManualTime.h"

#include <deque>
#include <optional>

namespace sv {

namespace {

using test::Peer;
using test::waitUntil;

constexpr char residual[] = "GameManager::run(): Warning! Residual network data.";

/// A game without a window that serves one peer, at a clock of the test's own.
class NetworkStep : public test::EngineTest {
  protected:
    void SetUp() override {
        prepareLog(1);
        Config::getInstance().loadConfig("headless:true,networking:true,frame_time:100,");
        ASSERT_EQ(game.startUp(), 0);
        ASSERT_EQ(network.setServer(0), 0);
        peer.emplace(network.getPort());
        ASSERT_TRUE(waitUntil([&] { return network.accept() == 0; }));
    }

    ~NetworkStep() override {
        if (game.isStarted())
            game.shutDown();
    }

    void arrive(const std::string &bytes) {
        peer->send(bytes);
        ASSERT_TRUE(waitUntil([&] { return network.isData(0) == static_cast<int>(bytes.size()); }));
    }

    void runSteps(int count) {
        time.sleeps.clear();
        time.during_sleep = [&, count] {
            game.setGameOver(static_cast<int>(time.sleeps.size()) == count);
        };
        game.run();
    }

    GameManager &game = GameManager::getInstance();
    NetworkManager &network = NetworkManager::getInstance();
    ManualTime time;
    std::optional<Peer> peer;
};

TEST_F(NetworkStep, a_message_that_is_heard_and_not_read_takes_a_fifth_of_the_frame) {
    arrive(makeMessage("read me"));
    int told = 0;
    new test::Ear([&](const EventNetwork &) {
        ++told;
        time.now_ms += 3; // Of 100: the round that reaches 20 is the seventh.
    });
    runSteps(2);
    EXPECT_EQ(told, 14);
    EXPECT_EQ(logCount(residual), 2);
    EXPECT_EQ(time.sleeps, (std::vector<int>{79, 79}));
}

TEST_F(NetworkStep, a_clock_that_is_set_back_ends_the_networks_share) {
    arrive(makeMessage("read me"));
    int told = 0;
    new test::Ear([&](const EventNetwork &) {
        if (++told == 2)
            time.now_ms -= 600'000;
        else if (told > 100)
            time.now_ms += 600'000; // Nothing else would end it.
        game.setGameOver();
    });
    runSteps(1);
    EXPECT_EQ(told, 2);
    EXPECT_EQ(logCount(residual), 1);
}

TEST_F(NetworkStep, a_message_that_nobody_hears_takes_no_time) {
    arrive(makeMessage("anyone?"));
    runSteps(3);
    EXPECT_EQ(logCount(residual), 0);
    EXPECT_EQ(network.isData(0), 11);
}

TEST_F(NetworkStep, every_message_that_waits_is_read_in_the_same_step) {
    arrive(makeMessage("one") + makeMessage("two") + makeMessage("three"));
    std::string heard;
    new test::Ear([&](const EventNetwork &event) {
        std::string message;
        EXPECT_EQ(network.receive(message, event.getSocketIndex()), event.getBytes());
        heard += std::to_string(game.getStepCount()) + messageBody(message).data() + " ";
    });
    runSteps(2);
    EXPECT_EQ(heard, "0one 0two 0three ");
}

TEST_F(NetworkStep, a_step_takes_one_connection_and_closes_those_whose_peer_is_gone) {
    network.setMaxSockets(10);
    const Peer second(network.getPort());
    const Peer third(network.getPort());
    runSteps(1);
    EXPECT_EQ(network.getNumConnections(), 2);
    peer->close();
    EXPECT_TRUE(waitUntil([&] {
        runSteps(1);
        return network.getNumConnections() == 2 && network.accept() == -1;
    }));
    EXPECT_FALSE(second.seesEnd() || third.seesEnd());
}

TEST_F(NetworkStep, bad_peers_do_not_disturb_a_good_one) {
    network.setMaxSockets(50);
    int heard = 0;
    new test::Ear([&](const EventNetwork &event) {
        std::string message;
        if (event.getLabel() == NETWORK_MESSAGE &&
            network.receive(message, event.getSocketIndex()) > 0)
            heard += messageBody(message) == "good" ? 1 : 0;
    });
    const std::string bad[] = {"",
                               "abc",
                               std::string(4, '\0'),
                               std::string(8, '\xff'),
                               std::string(8, '\x7f'),
                               makeMessage("x") + "half"};
    for (std::size_t step = 0; step < 200; ++step) {
        Peer(network.getPort()).send(bad[step % std::size(bad)]);
        peer->send(makeMessage("good"));
        runSteps(1);
    }
    EXPECT_TRUE(waitUntil([&] {
        runSteps(1);
        return network.getNumConnections() == 1 && network.isData(0) == 0;
    }));
    EXPECT_EQ(heard, 200);
    EXPECT_EQ(logCount(residual), 0);
    EXPECT_FALSE(peer->seesEnd());
}

/// Peers that come, misbehave and go, whether anybody takes them or not.
class Storm {
  public:
    explicit Storm(int new_port) : port(new_port) {}
    ~Storm() { end(); }
    Storm(const Storm &) = delete;
    Storm &operator=(const Storm &) = delete;

    void attempt() {
        const platform::Socket socket = platform::connectTo(LOOPBACK_ADDRESS, port, 0);
        const std::string &bytes = bad[attempts++ % std::size(bad)];
        if (socket == platform::no_socket)
            return; // The system had no place in its queue.
        sockets.push_back(socket);
        if (!bytes.empty())
            platform::send(socket, bytes.data(), static_cast<int>(bytes.size()));
        // Old enough to have been taken out of the queue, some of them. Who has been greeted and
        // has not read that goes with a reset.
        if (sockets.size() > 60)
            leave();
    }

    void end() {
        while (!sockets.empty())
            leave();
    }

    std::size_t attempts = 0;

  private:
    void leave() {
        platform::closeSocket(sockets.front());
        sockets.pop_front();
    }

    int port;
    std::deque<platform::Socket> sockets;
    static std::string manyMessages() {
        std::string bytes;
        for (int i = 0; i < 70; ++i)
            bytes += makeMessage("flood");
        return bytes;
    }

    static std::string halfAMessage() {
        return makeMessage(std::string(MAX_MESSAGE_BYTES - MESSAGE_LENGTH_BYTES, 'x'))
            .substr(0, MAX_MESSAGE_BYTES / 2);
    }

    const std::string bad[5] = {"", "abc", std::string(8, '\x7f'), manyMessages() + "half",
                                halfAMessage()};
};

TEST_F(NetworkStep, ten_thousand_attempts_to_connect_in_a_minute_stretch_no_step) {
    constexpr int steps = 1800; // A minute of the default frame time.
    constexpr int attempts_a_step = 6;
    constexpr int most_peers = 16;
    network.setMaxSockets(most_peers);
    int taken = 0;
    int good = 0;
    new test::Ear([&](const EventNetwork &event) {
        std::string message;
        if (event.getLabel() == NETWORK_ACCEPTED) {
            ++taken;
            network.send(makeMessage("hello"), event.getSocketIndex());
        }
        if (event.getLabel() == NETWORK_MESSAGE &&
            network.receive(message, event.getSocketIndex()) > 0) {
            ++time.now_ms; // Of 100, and 20 of them are the network's.
            good += messageBody(message) == "good" ? 1 : 0;
        }
    });
    Storm storm(network.getPort());
    int taken_in_all = 0;
    for (int step = 0; step < steps; ++step) {
        SCOPED_TRACE(step);
        for (int i = 0; i < attempts_a_step; ++i)
            storm.attempt();
        arrive(makeMessage("good"));
        taken = good = 0;
        runSteps(1);
        ASSERT_EQ(good, 1);
        ASSERT_LE(taken, 1);
        ASSERT_GE(time.sleeps[0], 100 - 20 - most_peers);
        taken_in_all += taken;
    }
    EXPECT_GT(storm.attempts, 10000U);
    EXPECT_GT(taken_in_all, steps / 2);
    storm.end();
    EXPECT_TRUE(waitUntil([&] {
        runSteps(1);
        return network.getNumConnections() == 1 && network.accept() == -1;
    }));
    EXPECT_FALSE(peer->seesEnd());
}

} // namespace

} // namespace sv
