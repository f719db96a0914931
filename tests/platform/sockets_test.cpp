#include "selvane/platform/sockets.h"

#include "selvane/platform/system.h"
#include "support/networkFaults.h"
#include "support/waitUntil.h"

#include <cerrno>
#include <climits>
#include <gtest/gtest.h>
#include <vector>

namespace sv::platform {
namespace {

using test::waitUntil;

const std::string loopback = "127.0.0.1";
constexpr int short_patience_ms = 50;

std::string lastText() {
    return socketErrorText(lastSocketError());
}

/// Expects a failure that waiting does not cure.
void expectRefused(std::intptr_t result) {
    EXPECT_EQ(result, -1);
    EXPECT_NE(lastSocketError(), 0);
    EXPECT_FALSE(isWouldBlock(lastSocketError())) << lastText();
}

/// Expects one line that says more than that the error is unknown. Wine does not know every error.
void expectReason() {
    EXPECT_EQ(lastText().find("nknown error"), std::string::npos) << lastText();
    EXPECT_EQ(lastText().find_first_of("\r\n"), std::string::npos) << lastText();
}

/// A server on the loopback and one connection to it, seen from both ends; open until the process
/// ends.
struct Connection : testing::Test {
    void SetUp() override {
        ASSERT_EQ(startSockets(), 0);
        listener = listenOn(loopback, 0, 4);
        ASSERT_NE(listener, no_socket) << lastText();
    }

    void establish(const std::string &host = loopback) {
        client = connectTo(host, localPort(listener));
        ASSERT_NE(client, no_socket) << lastText();
        ASSERT_TRUE(waitUntil([&] { return (server = acceptFrom(listener)) != no_socket; }))
            << lastText();
    }

    /// Sends from that end until the system takes nothing more.
    static void fill(Socket end) {
        const std::vector<char> bytes(1 << 20);
        ASSERT_TRUE(waitUntil(
            [&] { return send(end, bytes.data(), static_cast<int>(bytes.size())) == -1; }));
        EXPECT_TRUE(isWouldBlock(lastSocketError())) << lastText();
    }

    static void close(Socket &socket) {
        EXPECT_EQ(closeSocket(socket), 0);
        socket = no_socket;
    }

    Socket listener = no_socket;
    Socket client = no_socket;
    Socket server = no_socket;
};

TEST_F(Connection, keeps_a_peer_that_answers_without_reading) {
    establish();
    fill(client);
    for (int i = 0; i < 150; ++i) {
        ASSERT_FALSE(isPeerGone(client, short_patience_ms));
        systemTimeSource().sleep(10);
    }
}

TEST_F(Connection, notices_a_peer_that_vanished) {
    for (const bool has_stopped_reading : {false, true}) {
        SCOPED_TRACE(has_stopped_reading);
        establish();
        if (has_stopped_reading)
            fill(client);
        if (!test::dropIncoming(server))
            GTEST_SKIP() << "no way here to make a peer vanish";
        send(client, "abc", 3);
        EXPECT_TRUE(waitUntil([&] { return isPeerGone(client, short_patience_ms); }));
        EXPECT_FALSE(isPeerGone(client)) << "not so soon";
        close(server);
        close(client);
    }
}

TEST_F(Connection, holds_half_its_receive_buffer_sent_bytewise) {
    constexpr int size = receive_buffer_bytes / 2;
    establish();
    int sent = 0;
    ASSERT_TRUE(waitUntil([&] {
        while (sent < size && send(client, "x", 1) == 1)
            ++sent;
        return sent == size;
    }));
    EXPECT_TRUE(waitUntil([&] { return waitingBytes(server) == size; })) << waitingBytes(server);
}

TEST_F(Connection, has_its_options_at_both_ends) {
    establish();
    for (const Socket end : {client, server}) {
        const std::vector<int> options = test::socketOptions(end);
        const std::vector<int> wanted{2 * receive_buffer_bytes, 1, 1}; // Linux doubles the buffer.
        EXPECT_TRUE(options == wanted || options.empty()) << testing::PrintToString(options);
    }
}

TEST_F(Connection, leaves_nothing_behind) {
    establish();
    const Socket lowest = listener;
    const int port = localPort(listener);
    expectRefused(listenOn(loopback, port, 1));
    // The end that closes first is the one that lingers: here the server's.
    close(server);
    ASSERT_TRUE(waitUntil([&] { return isPeerGone(client); }));
    EXPECT_TRUE(waitUntil([&] { return send(client, "x", 1) == -1; })) << "and no signal";
    close(client);
    close(listener);
    expectRefused(connectTo(loopback, port));
    expectReason();
    expectRefused(listenOn("192.0.2.1", 0, 1)); // An address of another machine.
    listener = listenOn(loopback, port, 4);
    EXPECT_EQ(listener, lowest) << "a failed socket stays open, or the port is taken";
}

TEST_F(Connection, times_out_despite_interruptions) {
    close(listener);
    listener = listenOn(loopback, 0, 0);
    test::interruptCalls();
    // Nobody accepts: the queue fills, and then the system answers with silence or a refusal.
    const auto fails = [&] { return connectTo(loopback, localPort(listener), 50) == no_socket; };
    EXPECT_TRUE(waitUntil(fails));
    expectRefused(no_socket);
    EXPECT_NE(lastSocketError(), EINTR);
}

TEST_F(Connection, takes_host_names_and_ipv6_addresses) {
    const struct {
        const char *here, *there;
    } cases[] = {{"localhost", "localhost"}, {"::1", "::1"}, {"::", "127.0.0.1"}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.here);
        close(listener);
        listener = listenOn(c.here, 0, 1);
        if (listener == no_socket && c.here[0] == ':')
            GTEST_SKIP() << "no IPv6 on this machine: " << lastText();
        establish(c.there);
        close(client);
        close(server);
    }
}

TEST(Sockets, refuse_bad_addresses_and_sockets) {
    ASSERT_EQ(startSockets(), 0);
    expectRefused(connectTo(std::string(300, 'x'), 80));
    expectReason();
    expectRefused(connectTo(loopback, 65536 + 80));
    expectRefused(listenOn(loopback, -1, 1));
    char byte = 0;
    expectRefused(localPort(no_socket));
    expectRefused(waitingBytes(no_socket));
    expectRefused(receive(no_socket, &byte, 1));
    expectRefused(closeSocket(no_socket));
    EXPECT_TRUE(isPeerGone(no_socket));
    const int code = lastSocketError();
    EXPECT_EQ(closeSocket(listenOn(loopback, 0, 1)), 0);
    EXPECT_EQ(lastSocketError(), code) << "a later success does not change it";
    EXPECT_NE(socketErrorText(INT_MAX).find("nknown error"), std::string::npos);
}

} // namespace
} // namespace sv::platform
