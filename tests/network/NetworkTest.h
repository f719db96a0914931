/// Plain sockets as peers, and an object that passes network events to a test.
#pragma once

#include "selvane/core/EventNetwork.h"
#include "selvane/network/NetworkManager.h"
#include "selvane/platform/sockets.h"
#include "support/WorldTest.h"
#include "support/networkFaults.h"
#include "support/waitUntil.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace test {

/// The other end of a connection.
class Peer {
  public:
    explicit Peer(int port) : socket(sv::platform::connectTo("127.0.0.1", port)) {
        EXPECT_NE(socket, sv::platform::no_socket);
    }
    ~Peer() { close(); }
    Peer(const Peer &) = delete;
    Peer &operator=(const Peer &) = delete;

    void send(const std::string &bytes) const {
        const int size = static_cast<int>(bytes.size());
        EXPECT_TRUE(size == 0 || sv::platform::send(socket, bytes.data(), size) == size);
    }

    /// The bytes that wait; also empty at the end of the connection.
    std::string take() const {
        std::string bytes(1 << 16, '\0');
        const int size = sv::platform::receive(socket, bytes.data(), 1 << 16);
        bytes.resize(static_cast<std::size_t>(std::max(size, 0)));
        return bytes;
    }

    int waiting() const { return sv::platform::waitingBytes(socket); }
    bool seesEnd() const { return sv::platform::isPeerGone(socket); }

    void stopSending() const { test::stopSending(socket); }

    /// With unread bytes this resets the connection.
    void close() {
        if (socket != sv::platform::no_socket)
            sv::platform::closeSocket(socket);
        socket = sv::platform::no_socket;
    }

  private:
    sv::platform::Socket socket;
};

class NetworkListener : public sv::Object {
  public:
    explicit NetworkListener(std::function<void(const sv::EventNetwork &)> new_action)
        : action(std::move(new_action)) {
        EXPECT_EQ(registerInterest(sv::NETWORK_EVENT), 0);
    }

    int eventHandler(const sv::Event *p_event) override {
        const auto *event = sv::eventCast<sv::EventNetwork>(p_event);
        if (event)
            action(*event);
        return event ? 1 : 0;
    }

  private:
    std::function<void(const sv::EventNetwork &)> action;
};

/// Label, index and bytes of each event.
using Events = std::vector<std::array<int, 3>>;

} // namespace test
