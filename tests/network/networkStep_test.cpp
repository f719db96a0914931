// The network's part of a step of the game loop.

#include "network/NetworkTest.h"
#include "selvane/core/Config.h"
#include "selvane/loop/GameManager.h"
#include "selvane/platform/ManualTime.h"
#include "selvane/world/spawn.h"

#include <optional>

namespace sv {

namespace {

using test::NetworkListener;
using test::Peer;
using test::waitUntil;

constexpr char residual[] = "GameManager::run(): Warning! Residual network data.";

/// A game without a window that serves one peer and runs on a ManualTime.
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

TEST_F(NetworkStep, an_unread_message_takes_a_fifth) {
    arrive(makeMessage("read me"));
    runSteps(1);
    EXPECT_EQ(logCount(residual), 0) << "nobody listens";
    network.setMaxSockets(2);
    const Peer idle(network.getPort());
    ASSERT_TRUE(waitUntil([&] { return network.accept() == 1; }));
    int heard = 0;
    spawn<NetworkListener>([&](const EventNetwork &) {
        ++heard;
        time.now_ms += 3; // Of 100: the round that reaches 20 is the seventh.
    });
    runSteps(2);
    EXPECT_EQ(heard, 14);
    EXPECT_EQ(logCount(residual), 2);
    EXPECT_EQ(time.sleeps, (std::vector<int>{79, 79}));
}

TEST_F(NetworkStep, a_clock_set_back_ends_the_share) {
    arrive(makeMessage("read me"));
    int heard = 0;
    spawn<NetworkListener>([&](const EventNetwork &) {
        // Nothing but the later jump forward would end a share that goes on.
        time.now_ms += ++heard == 2 ? -600'000 : heard > 100 ? 600'000 : 0;
    });
    runSteps(1);
    EXPECT_EQ(heard, 2);
    EXPECT_EQ(logCount(residual), 1);
}

TEST_F(NetworkStep, all_waiting_messages_are_read) {
    arrive(makeMessage("one") + makeMessage("two") + makeMessage("three"));
    std::string heard;
    spawn<NetworkListener>([&](const EventNetwork &event) {
        std::string message;
        EXPECT_EQ(network.receive(message, event.getSocketIndex()), event.getBytes());
        heard += std::to_string(game.getStepCount()) + messageBody(message).data() + " ";
    });
    runSteps(2);
    EXPECT_EQ(heard, "0one 0two 0three ");
}

TEST_F(NetworkStep, one_connection_is_accepted_per_step) {
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

TEST_F(NetworkStep, bad_peers_do_not_disturb_others) {
    network.setMaxSockets(50);
    int heard = 0;
    spawn<NetworkListener>([&](const EventNetwork &event) {
        std::string message;
        if (event.getLabel() == NETWORK_MESSAGE &&
            network.receive(message, event.getSocketIndex()) > 0)
            heard += messageBody(message) == "good" ? 1 : 0;
    });
    const std::string zeros(4, '\0');
    const std::string bad[] = {
        "", "abc", zeros, "\xff\xff\xff\xff", "\x7f\x7f\x7f\x7f", makeMessage("x") + "half"};
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

} // namespace

} // namespace sv
