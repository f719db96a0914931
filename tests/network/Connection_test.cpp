#include "selvane/network/Connection.h"

#include "network/NetworkTest.h"
#include "selvane/platform/ManualTime.h"

namespace sv {

namespace {

using test::waitUntil;

TEST(Connections, peers_that_stop_sending_must_read) {
    ASSERT_EQ(platform::startSockets(), 0);
    ManualTime time;
    const platform::Socket listener = platform::listenOn("127.0.0.1", 0, 1);
    const test::Peer peer(platform::localPort(listener));
    platform::Socket accepted = platform::no_socket;
    ASSERT_TRUE(waitUntil(
        [&] { return (accepted = platform::acceptFrom(listener)) != platform::no_socket; }));
    test::shrinkSendBuffer(accepted);
    Connection connection(accepted, 0);
    const std::string message(MAX_MESSAGE_BYTES, 'x');
    peer.stopSending();
    for (int round = 0; round < 3; ++round) {
        while (connection.hasRoomFor(message.size()))
            EXPECT_EQ(connection.send(message), 0);
        EXPECT_FALSE(connection.isDead());
        time.now_ms += platform::peer_patience_ms - 1;
        EXPECT_FALSE(connection.isDead()) << round;
        EXPECT_TRUE(waitUntil([&] {
            peer.take();
            connection.flush();
            return connection.hasRoomFor(message.size());
        }));
    }
    EXPECT_FALSE(connection.isDead());
    time.now_ms += platform::peer_patience_ms;
    EXPECT_TRUE(connection.isDead());
    platform::closeSocket(listener);
}

} // namespace

} // namespace sv
