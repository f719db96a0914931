// The network's part of a step of the game loop.

#include "network/NetworkTest.h"

namespace sv {

namespace {

using test::Peer;
using test::waitUntil;

constexpr char residual[] = "GameManager::run(): Warning! Residual network data.\n";

struct NetworkStep : test::NetworkTest {
    void SetUp() override { join(1); }

    void sendAndArrive(const std::string &bytes) {
        peers[0]->send(bytes);
        arrive(0, bytes.size());
    }

    ManualTime &time = session.getTime();
};

TEST_F(NetworkStep, an_unread_message_takes_a_fifth) {
    join(1); // A second one, which is idle.
    sendAndArrive(makeMessage("read me"));
    on_event = [&](const EventNetwork &) {
        time.now_ms += 3; // Of 100: the round that reaches 20 is the seventh.
    };
    session.play(2);
    EXPECT_EQ(events.size(), 14U);
    EXPECT_EQ(logCount(residual), 2);
    EXPECT_EQ(time.sleeps, (std::vector<int>{79, 79}));
}

TEST_F(NetworkStep, a_clock_set_back_ends_the_share) {
    sendAndArrive(makeMessage("read me"));
    on_event = [&](const EventNetwork &) {
        // Nothing but the later jump forward would end a share that goes on.
        time.now_ms += events.size() == 2 ? -600'000 : events.size() > 100 ? 600'000 : 0;
    };
    session.play();
    EXPECT_EQ(events.size(), 2U);
    EXPECT_EQ(logCount(residual), 1);
}

TEST_F(NetworkStep, one_connection_is_accepted_per_step) {
    const Peer second(network.getPort());
    const Peer third(network.getPort());
    session.play();
    EXPECT_EQ(network.getNumConnections(), 2);
    peers[0]->close();
    EXPECT_TRUE(waitUntil([&] {
        session.play();
        return network.getNumConnections() == 2 && network.accept() == -1;
    }));
    EXPECT_FALSE(second.seesEnd() || third.seesEnd());
}

TEST_F(NetworkStep, bad_peers_do_not_disturb_others) {
    int heard = 0;
    on_event = [&](const EventNetwork &event) {
        std::string message;
        if (event.getLabel() == NETWORK_MESSAGE &&
            network.receive(message, event.getSocketIndex()) > 0)
            heard += messageBody(message) == "good" ? 1 : 0;
    };
    const std::string zeros(4, '\0');
    const std::string bad[] = {
        "", "abc", zeros, "\xff\xff\xff\xff", "\x7f\x7f\x7f\x7f", makeMessage("x") + "half"};
    for (std::size_t step = 0; step < 200; ++step) {
        Peer(network.getPort()).send(bad[step % std::size(bad)]);
        peers[0]->send(makeMessage("good"));
        session.play();
    }
    EXPECT_TRUE(waitUntil([&] {
        session.play();
        return network.getNumConnections() == 1 && network.isData(0) == 0;
    }));
    EXPECT_EQ(heard, 200);
    EXPECT_EQ(logCount(residual), 0);
    EXPECT_FALSE(peers[0]->seesEnd());
}

} // namespace

} // namespace sv
