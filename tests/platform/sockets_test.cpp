#include "selvane/platform/sockets.h"

#include "selvane/platform/system.h"
#include "support/trouble.h"
#include "support/waitUntil.h"

#include <algorithm>
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

void expectWouldBlock(std::intptr_t result) {
    EXPECT_EQ(result, -1);
    EXPECT_TRUE(isWouldBlock(lastSocketError())) << lastText();
}

/// Expects a failure that waiting does not cure.
void expectRefused(std::intptr_t result) {
    EXPECT_EQ(result, -1);
    EXPECT_NE(lastSocketError(), 0);
    EXPECT_FALSE(isWouldBlock(lastSocketError())) << lastText();
}

/// Expects that the system can say more of the last failure than that it is unknown. Wine cannot of
/// every one.
void expectReason() {
    EXPECT_EQ(lastText().find("nknown error"), std::string::npos) << lastText();
}

/// A server on the loopback and one connection to it, seen from both ends.
class Connection : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(startSockets(), 0);
        listener = listenOn(loopback, 0, 4);
        ASSERT_NE(listener, no_socket) << lastText();
    }

    void TearDown() override {
        for (const Socket socket : {client, server, listener})
            if (socket != no_socket)
                closeSocket(socket);
    }

    void establish(const std::string &host = loopback) {
        client = connectTo(host, localPort(listener));
        ASSERT_NE(client, no_socket) << lastText();
        ASSERT_TRUE(waitUntil([&] { return (server = acceptFrom(listener)) != no_socket; }))
            << lastText();
    }

    static bool arrives(Socket end, int bytes) {
        return waitUntil([&] { return waitingBytes(end) == bytes; });
    }

    /// Sends from that end until nothing more is taken.
    static void fill(Socket end) {
        const std::vector<char> bytes(1 << 20);
        ASSERT_TRUE(waitUntil(
            [&] { return send(end, bytes.data(), static_cast<int>(bytes.size())) == -1; }));
        expectWouldBlock(-1);
    }

    static void close(Socket &socket) {
        EXPECT_EQ(closeSocket(socket), 0);
        socket = no_socket;
    }

    Socket listener = no_socket;
    Socket client = no_socket;
    Socket server = no_socket;
};

TEST_F(Connection, is_accepted_once_at_a_port_of_its_own) {
    EXPECT_EQ(startSockets(), 0) << "again";
    EXPECT_GE(localPort(listener), 1);
    EXPECT_LE(localPort(listener), 65535);
    expectWouldBlock(acceptFrom(listener));
    establish();
    expectWouldBlock(acceptFrom(listener));
}

TEST_F(Connection, with_nothing_to_read_would_block_at_both_ends) {
    establish();
    for (const Socket end : {client, server}) {
        char byte = 0;
        EXPECT_EQ(waitingBytes(end), 0);
        expectWouldBlock(receive(end, &byte, 1));
        expectWouldBlock(peek(end, &byte, 1));
    }
}

TEST_F(Connection, peeking_leaves_the_bytes_and_receiving_takes_them) {
    establish();
    ASSERT_EQ(send(client, "abcde", 5), 5);
    ASSERT_TRUE(arrives(server, 5));

    char buffer[16] = {};
    EXPECT_EQ(peek(server, buffer, 3), 3);
    EXPECT_EQ(std::string(buffer, 3), "abc");
    EXPECT_EQ(receive(server, buffer, 2), 2);
    EXPECT_EQ(std::string(buffer, 2), "ab");
    EXPECT_EQ(waitingBytes(server), 3);
    EXPECT_EQ(receive(server, buffer, sizeof buffer), 3);
    EXPECT_EQ(std::string(buffer, 3), "cde");
}

TEST_F(Connection, gives_what_was_sent_before_the_close_before_the_end) {
    establish();
    ASSERT_EQ(send(server, "z", 1), 1);
    ASSERT_TRUE(arrives(client, 1));
    EXPECT_FALSE(isPeerGone(client));
    close(server);
    char byte = 0;
    EXPECT_EQ(receive(client, &byte, 1), 1);
    EXPECT_EQ(byte, 'z');
    EXPECT_TRUE(waitUntil([&] { return isPeerGone(client); }));
    EXPECT_EQ(receive(client, &byte, 1), 0);
    EXPECT_EQ(peek(client, &byte, 1), 0);
    EXPECT_EQ(waitingBytes(client), 0);
    // The first bytes may still be taken over: only the answer to them tells that nobody is there.
    ASSERT_TRUE(waitUntil([&] { return send(client, "x", 1) == -1; }));
    EXPECT_FALSE(isWouldBlock(lastSocketError()));
    EXPECT_TRUE(isPeerGone(no_socket));
}

TEST_F(Connection, sending_faster_than_the_peer_reads_would_block) {
    establish();
    fill(client);
    fill(server);
}

TEST_F(Connection, has_its_peer_as_long_as_that_answers_even_if_it_never_reads) {
    establish();
    fill(client);
    for (int i = 0; i < 150; ++i) {
        ASSERT_FALSE(isPeerGone(client, short_patience_ms));
        systemTimeSource().sleep(10);
    }
}

TEST_F(Connection, to_a_peer_that_vanished_is_gone_though_the_system_goes_on_sending) {
    for (const bool has_stopped_reading : {false, true}) {
        SCOPED_TRACE(has_stopped_reading);
        establish();
        if (has_stopped_reading)
            fill(client);
        if (!test::fallSilent(server))
            GTEST_SKIP() << "no way here to make a peer vanish";
        send(client, "abc", 3);
        EXPECT_TRUE(waitUntil([&] { return isPeerGone(client, short_patience_ms); }));
        EXPECT_FALSE(isPeerGone(client)) << "not so soon";
        close(server);
        close(client);
    }
}

TEST_F(Connection, half_the_receive_buffer_waits_whole_however_it_comes) {
    constexpr int size = receive_buffer_bytes / 2;
    const std::vector<char> bytes(size);
    for (const int piece : {1, 100, size}) {
        SCOPED_TRACE(piece);
        establish();
        int sent = 0;
        ASSERT_TRUE(waitUntil([&] {
            for (int taken = 0; taken >= 0 && sent < size;) {
                taken = send(client, bytes.data(), std::min(piece, size - sent));
                sent += std::max(taken, 0);
            }
            return sent == size;
        }));
        EXPECT_TRUE(arrives(server, size)) << waitingBytes(server);
        close(client);
        close(server);
    }
}

TEST_F(Connection, a_port_is_refused_while_listened_on_and_free_while_its_last_connection_fades) {
    establish();
    const int port = localPort(listener);
    expectRefused(listenOn(loopback, port, 1));
    // The end that closes first is the one that lingers: here the server's.
    close(server);
    ASSERT_TRUE(waitUntil([&] { return isPeerGone(client); }));
    close(client);
    close(listener);
    expectRefused(connectTo(loopback, port));
    expectReason();
    listener = listenOn(loopback, port, 4);
    EXPECT_NE(listener, no_socket) << lastText();
}

TEST_F(Connection, one_that_does_not_come_about_is_given_up_whatever_interrupts) {
    close(listener);
    listener = listenOn(loopback, 0, 0);
    const test::Interruptions interruptions;
    // Nobody accepts: the queue fills, and then the system answers with silence or a refusal.
    std::vector<Socket> queued;
    EXPECT_TRUE(waitUntil([&] {
        queued.push_back(connectTo(loopback, localPort(listener), 50));
        return queued.back() == no_socket;
    }));
    expectRefused(queued.back());
    queued.pop_back();
    for (Socket &socket : queued)
        close(socket);
}

TEST_F(Connection, host_names_and_ipv6_serve_to_listen_and_to_connect) {
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
        ASSERT_EQ(send(client, "abc", 3), 3);
        EXPECT_TRUE(arrives(server, 3));
        close(client);
        close(server);
    }
}

TEST(Sockets, what_cannot_be_an_address_or_a_port_is_refused) {
    ASSERT_EQ(startSockets(), 0);
    const std::string too_long(300, 'x');
    expectRefused(listenOn(too_long, 0, 1));
    expectRefused(listenOn("192.0.2.1", 0, 1)); // An address that is not here.
    expectRefused(listenOn(loopback, -1, 1));
    expectRefused(listenOn(loopback, 65536, 1));
    expectRefused(connectTo(too_long, 80));
    expectReason();
    expectRefused(connectTo(loopback, 65536 + 80));
}

TEST(Sockets, no_socket_answers_minus_one_to_everything) {
    ASSERT_EQ(startSockets(), 0);
    char byte = 0;
    for (const std::intptr_t answer :
         {std::intptr_t{localPort(no_socket)}, acceptFrom(no_socket),
          std::intptr_t{waitingBytes(no_socket)}, std::intptr_t{peek(no_socket, &byte, 1)},
          std::intptr_t{receive(no_socket, &byte, 1)}, std::intptr_t{send(no_socket, &byte, 1)},
          std::intptr_t{closeSocket(no_socket)}})
        expectRefused(answer);
    const int code = lastSocketError();
    EXPECT_EQ(closeSocket(listenOn(loopback, 0, 1)), 0);
    EXPECT_EQ(lastSocketError(), code) << "a later success does not wipe it";
}

TEST(Sockets, every_code_has_a_text_of_one_line) {
    for (const int code : {0, 1, 104, 111, 10035, 10054, 11001, INT_MAX, -1, -2, INT_MIN}) {
        const std::string text = socketErrorText(code);
        EXPECT_NE(text, "") << code;
        EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos) << code << ": " << text;
    }
}

} // namespace
} // namespace sv::platform
