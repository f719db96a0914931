#include "platform/sockets.h"
#include "platform/system.h"
#include "support/trouble.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sv::platform {

namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

const std::string loopback = "127.0.0.1";

bool eventually(const std::function<bool()> &holds) {
    const auto deadline = steady_clock::now() + 20s;
    while (!holds()) {
        if (steady_clock::now() > deadline) {
            return false;
        }
        systemTimeSource().sleep(1);
    }
    return true;
}

std::string lastText() {
    return socketErrorText(lastSocketError());
}

/// Whether a text only says that the system has none.
bool isUnknown(const std::string &text) {
    return text.find("nknown error") != std::string::npos;
}

/// A server on the loopback and one connection to it, seen from both ends.
class Connection : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(startSockets(), 0);
        listen(loopback);
    }

    void TearDown() override {
        for (const Socket socket : {client, server, listener}) {
            if (socket != no_socket) {
                closeSocket(socket);
            }
        }
    }

    void listen(const std::string &address, int port = 0) {
        listener = listenOn(address, port, 4);
        ASSERT_NE(listener, no_socket) << lastText();
    }

    void establish(const std::string &host) {
        client = connectTo(host, localPort(listener));
        ASSERT_NE(client, no_socket) << lastText();
        ASSERT_TRUE(eventually([&] { return (server = acceptFrom(listener)) != no_socket; }))
            << lastText();
    }

    /// Sends from that end until nothing more is taken.
    void fill(Socket end) {
        const std::vector<char> bytes(1 << 20);
        ASSERT_TRUE(eventually(
            [&] { return send(end, bytes.data(), static_cast<int>(bytes.size())) == -1; }));
        EXPECT_TRUE(isWouldBlock(lastSocketError())) << lastText();
    }

    void close(Socket &socket) {
        EXPECT_EQ(closeSocket(socket), 0);
        socket = no_socket;
    }

    Socket listener = no_socket;
    Socket client = no_socket;
    Socket server = no_socket;
};

TEST_F(Connection, sockets_may_be_started_twice) {
    EXPECT_EQ(startSockets(), 0);
    establish(loopback);
}

TEST_F(Connection, a_free_port_is_a_real_one) {
    EXPECT_GE(localPort(listener), 1);
    EXPECT_LE(localPort(listener), 65535);
    const Socket other = listenOn(loopback, 0, 1);
    ASSERT_NE(other, no_socket);
    EXPECT_NE(localPort(other), localPort(listener));
    closeSocket(other);
}

TEST_F(Connection, accepting_with_nobody_there_would_block) {
    EXPECT_EQ(acceptFrom(listener), no_socket);
    EXPECT_TRUE(isWouldBlock(lastSocketError())) << lastText();
}

TEST_F(Connection, each_waiting_connection_is_taken_once) {
    establish(loopback);
    EXPECT_EQ(acceptFrom(listener), no_socket);
    EXPECT_TRUE(isWouldBlock(lastSocketError())) << lastText();
}

TEST_F(Connection, receiving_with_nothing_there_would_block_at_both_ends) {
    establish(loopback);
    for (const Socket end : {client, server}) {
        char byte = 0;
        EXPECT_EQ(waitingBytes(end), 0);
        EXPECT_EQ(receive(end, &byte, 1), -1);
        EXPECT_TRUE(isWouldBlock(lastSocketError())) << lastText();
        EXPECT_EQ(peek(end, &byte, 1), -1);
        EXPECT_TRUE(isWouldBlock(lastSocketError())) << lastText();
    }
}

TEST_F(Connection, a_host_name_is_looked_up) {
    establish("localhost");
}

TEST_F(Connection, peeking_leaves_the_bytes_and_receiving_takes_them) {
    establish(loopback);
    ASSERT_EQ(send(client, "abcde", 5), 5);
    ASSERT_TRUE(eventually([&] { return waitingBytes(server) == 5; }));

    char buffer[16] = {};
    EXPECT_EQ(peek(server, buffer, 3), 3);
    EXPECT_EQ(std::string(buffer, 3), "abc");
    EXPECT_EQ(waitingBytes(server), 5);

    EXPECT_EQ(receive(server, buffer, 2), 2);
    EXPECT_EQ(std::string(buffer, 2), "ab");
    EXPECT_EQ(waitingBytes(server), 3);

    EXPECT_EQ(receive(server, buffer, sizeof buffer), 3);
    EXPECT_EQ(std::string(buffer, 3), "cde");
    EXPECT_EQ(waitingBytes(server), 0);
}

TEST_F(Connection, bytes_sent_before_the_close_come_before_the_end) {
    establish(loopback);
    ASSERT_EQ(send(server, "z", 1), 1);
    close(server);
    ASSERT_TRUE(eventually([&] { return waitingBytes(client) == 1; }));

    char byte = 0;
    EXPECT_EQ(receive(client, &byte, 1), 1);
    EXPECT_EQ(byte, 'z');
    EXPECT_TRUE(eventually([&] { return receive(client, &byte, 1) == 0; })) << lastText();
    EXPECT_EQ(peek(client, &byte, 1), 0);
    EXPECT_EQ(waitingBytes(client), 0);
}

TEST_F(Connection, sending_to_a_peer_that_has_closed_is_an_error) {
    establish(loopback);
    close(server);
    // The first bytes may still be taken over: only the answer to them tells that nobody is there.
    ASSERT_TRUE(eventually([&] { return send(client, "x", 1) == -1; }));
    EXPECT_FALSE(isWouldBlock(lastSocketError()));
    EXPECT_EQ(send(client, "x", 1), -1);
}

TEST_F(Connection, sending_faster_than_the_peer_reads_would_block) {
    establish(loopback);
    fill(client);
    fill(server);
}

TEST_F(Connection, a_port_can_be_listened_on_again_while_its_last_connection_fades) {
    establish(loopback);
    const int port = localPort(listener);
    // The end that closes first is the one that lingers: here the server's.
    close(server);
    char byte = 0;
    ASSERT_TRUE(eventually([&] { return receive(client, &byte, 1) == 0; }));
    close(client);
    close(listener);
    listen(loopback, port);
}

TEST_F(Connection, a_port_listened_on_is_refused_to_another) {
    EXPECT_EQ(listenOn(loopback, localPort(listener), 1), no_socket);
    EXPECT_FALSE(isWouldBlock(lastSocketError()));
}

TEST_F(Connection, a_refused_connection_tells_why) {
    const int port = localPort(listener);
    close(listener);
    EXPECT_EQ(connectTo(loopback, port), no_socket);
    EXPECT_FALSE(isWouldBlock(lastSocketError()));
    EXPECT_FALSE(isUnknown(lastText())) << lastText();
}

TEST_F(Connection, a_connection_that_does_not_come_about_is_given_up_whatever_interrupts) {
    close(listener);
    listener = listenOn(loopback, 0, 0);
    const test::Interruptions interruptions;
    // Nobody accepts: the queue fills, and then the system answers with silence or a refusal.
    std::vector<Socket> queued;
    EXPECT_TRUE(eventually([&] {
        queued.push_back(connectTo(loopback, localPort(listener), 50));
        return queued.back() == no_socket;
    }));
    EXPECT_FALSE(isWouldBlock(lastSocketError()));
    queued.pop_back();
    for (Socket &socket : queued)
        close(socket);
}

TEST_F(Connection, a_host_name_serves_to_listen_and_to_connect) {
    close(listener);
    listen("localhost");
    establish("localhost");
}

TEST_F(Connection, a_peer_is_gone_when_it_closes_and_not_before) {
    establish(loopback);
    EXPECT_FALSE(isPeerGone(client));
    ASSERT_EQ(send(server, "abc", 3), 3);
    ASSERT_TRUE(eventually([&] { return waitingBytes(client) == 3; }));
    EXPECT_FALSE(isPeerGone(client));
    close(server);
    char buffer[3] = {};
    EXPECT_EQ(receive(client, buffer, 3), 3);
    EXPECT_TRUE(eventually([&] { return isPeerGone(client); }));
    EXPECT_TRUE(isPeerGone(no_socket));
}

TEST_F(Connection, a_peer_that_answers_is_there_even_if_it_never_reads) {
    constexpr int short_patience_ms = 50;
    establish(loopback);
    fill(client);
    for (int i = 0; i < 150; ++i) {
        ASSERT_FALSE(isPeerGone(client, short_patience_ms));
        systemTimeSource().sleep(10);
    }
}

TEST_F(Connection, a_peer_that_vanishes_is_gone_though_the_system_goes_on_sending) {
    constexpr int short_patience_ms = 50;
    for (const bool has_stopped_reading : {false, true}) {
        SCOPED_TRACE(has_stopped_reading);
        establish(loopback);
        if (has_stopped_reading)
            fill(client);
        if (!test::fallSilent(server))
            GTEST_SKIP() << "no way here to make a peer vanish";
        send(client, "abc", 3);
        EXPECT_TRUE(eventually([&] { return isPeerGone(client, short_patience_ms); }));
        EXPECT_FALSE(isPeerGone(client)) << "not so soon";
        close(server);
        close(client);
    }
}

TEST_F(Connection, half_the_receive_buffer_waits_whole_however_it_comes) {
    constexpr int size = receive_buffer_bytes / 2;
    for (const int piece : {1, 100, size}) {
        SCOPED_TRACE(piece);
        establish(loopback);
        const std::vector<char> bytes(size);
        int sent = 0;
        ASSERT_TRUE(eventually([&] {
            for (int taken = 0; taken >= 0 && sent < size;) {
                taken = send(client, bytes.data(), std::min(piece, size - sent));
                sent += std::max(taken, 0);
            }
            return sent == size;
        }));
        EXPECT_TRUE(eventually([&] { return waitingBytes(server) == size; }))
            << waitingBytes(server);
        close(client);
        close(server);
    }
}

TEST_F(Connection, ipv6_works_as_ipv4_does) {
    close(listener);
    listener = listenOn("::1", 0, 1);
    if (listener == no_socket) {
        GTEST_SKIP() << "no IPv6 loopback on this machine: " << lastText();
    }
    EXPECT_GE(localPort(listener), 1);
    establish("::1");
    ASSERT_EQ(send(client, "abc", 3), 3);
    EXPECT_TRUE(eventually([&] { return waitingBytes(server) == 3; }));
}

TEST_F(Connection, all_addresses_are_those_of_ipv4_too) {
    close(listener);
    listener = listenOn("::", 0, 1);
    if (listener == no_socket) {
        GTEST_SKIP() << "no IPv6 on this machine: " << lastText();
    }
    establish(loopback);
}

TEST(Sockets, what_cannot_be_an_address_or_a_port_is_an_error) {
    ASSERT_EQ(startSockets(), 0);
    const struct {
        const char *name;
        std::function<Socket()> attempt;
    } cases[] = {
        {"a host name too long to listen on", [] { return listenOn(std::string(300, 'x'), 0, 1); }},
        {"an address that is not here", [] { return listenOn("192.0.2.1", 0, 1); }},
        {"a port below 0 to listen on", [] { return listenOn(loopback, -1, 1); }},
        {"a port above 65535 to listen on", [] { return listenOn(loopback, 65536, 1); }},
        {"a port above 65535 to connect to", [] { return connectTo(loopback, 65536 + 80); }},
        {"a host name too long to ask for", [] { return connectTo(std::string(300, 'x'), 80); }},
    };
    for (const auto &each : cases) {
        SCOPED_TRACE(each.name);
        closeSocket(no_socket);
        const int earlier = lastSocketError();
        EXPECT_EQ(each.attempt(), no_socket);
        EXPECT_NE(lastSocketError(), earlier);
        EXPECT_NE(lastSocketError(), 0);
        EXPECT_FALSE(isWouldBlock(lastSocketError()));
    }
}

TEST(Sockets, a_failed_name_lookup_tells_why) {
    ASSERT_EQ(startSockets(), 0);
    ASSERT_EQ(connectTo(std::string(300, 'x'), 80), no_socket);
    EXPECT_FALSE(isUnknown(lastText())) << lastText();
}

TEST(Sockets, no_socket_answers_minus_one_to_everything) {
    ASSERT_EQ(startSockets(), 0);
    char byte = 0;
    EXPECT_EQ(localPort(no_socket), -1);
    EXPECT_EQ(acceptFrom(no_socket), no_socket);
    EXPECT_EQ(waitingBytes(no_socket), -1);
    EXPECT_EQ(peek(no_socket, &byte, 1), -1);
    EXPECT_EQ(receive(no_socket, &byte, 1), -1);
    EXPECT_EQ(send(no_socket, &byte, 1), -1);
    EXPECT_EQ(closeSocket(no_socket), -1);
    EXPECT_FALSE(isWouldBlock(lastSocketError()));
}

TEST(Sockets, a_later_success_does_not_wipe_the_last_error) {
    ASSERT_EQ(startSockets(), 0);
    ASSERT_EQ(receive(no_socket, nullptr, 1), -1);
    const int code = lastSocketError();
    const Socket listener = listenOn(loopback, 0, 1);
    EXPECT_EQ(closeSocket(listener), 0);
    EXPECT_EQ(lastSocketError(), code);
}

TEST(Sockets, every_code_has_a_text_of_one_line) {
    for (const int code : {0, 1, 9, 11, 104, 111, 10035, 10048, 10054, 10061, 11001, 123456,
                           INT_MAX, -1, -2, -123456, INT_MIN}) {
        const std::string text = socketErrorText(code);
        EXPECT_NE(text, "") << code;
        EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos) << code << ": " << text;
    }
}

} // namespace

} // namespace sv::platform
