/// A server and its peers, which are plain sockets.
#pragma once

#include "selvane/core/EventNetwork.h"
#include "selvane/network/NetworkManager.h"
#include "selvane/platform/sockets.h"
#include "selvane/world/spawn.h"
#include "support/SessionTest.h"
#include "support/networkFaults.h"
#include "support/waitUntil.h"

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <utility>
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
            sv::platform::closeSocket(std::exchange(socket, sv::platform::no_socket));
    }

  private:
    sv::platform::Socket socket;
};

/// Label, index and bytes of each event.
using Events = std::vector<std::array<int, 3>>;

class NetworkTest : public SessionTest {
  protected:
    NetworkTest() : SessionTest("networking:true,frame_time:100,") { sv::spawn<Listener>(*this); }

    ~NetworkTest() override {
        // The last step would wait for ever for unread messages if they took no time.
        on_event = [this](const sv::EventNetwork &) { session.getTime().now_ms += 100; };
        session.end();
    }

    /// Accepts that many more peers.
    void join(int count) {
        ASSERT_TRUE(network.isServer() || network.setServer(0) == 0);
        network.setMaxSockets(100);
        for (int i = 0; i < count; ++i) {
            peers.push_back(std::make_unique<Peer>(network.getPort()));
            ASSERT_TRUE(waitUntil([&] { return network.accept() >= 0; }));
        }
        events.clear();
    }

    /// Waits until that many bytes wait.
    void arrive(int index, std::size_t bytes) {
        ASSERT_TRUE(waitUntil([&] { return network.isData(index) == static_cast<int>(bytes); }));
    }

    sv::NetworkManager &network = sv::NetworkManager::getInstance();
    std::vector<std::unique_ptr<Peer>> peers;
    Events events;
    std::function<void(const sv::EventNetwork &)> on_event;

  private:
    struct Listener : sv::Object {
        explicit Listener(NetworkTest &new_owner) : owner(new_owner) {
            EXPECT_EQ(registerInterest(sv::NETWORK_EVENT), 0);
        }

        int eventHandler(const sv::Event *p_event) override {
            const auto &event = dynamic_cast<const sv::EventNetwork &>(*p_event);
            owner.events.push_back({event.getLabel(), event.getSocketIndex(), event.getBytes()});
            if (owner.on_event)
                owner.on_event(event);
            return 1;
        }

        NetworkTest &owner;
    };
};

} // namespace test
