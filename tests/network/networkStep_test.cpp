// The network's part of a step of the game loop.

#include "core/Config.h"
#include "loop/GameManager.h"
#include "network/NetworkTest.h"
#include "support/ManualTime.h"

#include <optional>

namespace sv {

namespace {

using test::eventually;
using test::Peer;

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
        ASSERT_TRUE(eventually([&] { return network.accept() == 0; }));
    }

    ~NetworkStep() override {
        if (game.isStarted())
            game.shutDown();
    }

    void arrive(const std::string &bytes) {
        peer->send(bytes);
        ASSERT_TRUE(
            eventually([&] { return network.isData(0) == static_cast<int>(bytes.size()); }));
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
    test::ManualTime time;
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
    EXPECT_TRUE(eventually([&] {
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
            ++heard;
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
    EXPECT_TRUE(eventually([&] {
        runSteps(1);
        return network.getNumConnections() == 1 && network.isData(0) == 0;
    }));
    EXPECT_GE(heard, 200);
    EXPECT_EQ(logCount(residual), 0);
    EXPECT_FALSE(peer->seesEnd());
}

} // namespace

} // namespace sv
