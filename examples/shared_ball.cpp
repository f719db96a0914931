// Two programs share a moving ball over TCP, as text.
//
//   shared_ball serve [PORT [STEPS]]   moves the ball and prints its port: without PORT, a free one
//   shared_ball join PORT [STEPS]      shows that ball and prints its position with every message
//
// Each ends when its window is closed or after STEPS steps; the server also when its last guest
// leaves, and a guest when the server ends. SELVANE_CONFIG names a file of settings: with
// "headless:true," in it there are no windows. In one line: shared_ball serve | shared_ball join -

#include "selvane/core/Config.h"
#include "selvane/core/EventNetwork.h"
#include "selvane/core/EventStep.h"
#include "selvane/core/attributes.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/network/NetworkManager.h"
#include "selvane/network/message.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/spawn.h"

#include <cstdlib>
#include <iostream>
#include <string>

namespace {

constexpr int most_guests = 8;

void endGame() {
    sv::GameManager::getInstance().setGameOver();
}

/// Ends the game after that many steps.
class StepLimit : public sv::Object {
  public:
    explicit StepLimit(int new_steps) : steps(new_steps) { registerInterest(sv::STEP_EVENT); }

    int eventHandler(const sv::Event *p_event) override {
        const auto *step_event = sv::eventCast<sv::EventStep>(p_event);
        if (step_event && step_event->getStepCount() >= steps)
            endGame();
        return step_event ? 1 : 0;
    }

  private:
    int steps;
};

class Ball : public sv::Object {
  public:
    Ball() { setSolidness(sv::SPECTRAL); }

    int draw() override {
        return sv::DisplayManager::getInstance().drawCh(getPosition(), 'O', sv::YELLOW);
    }

    /// Turns back when it has left the world.
    int eventHandler(const sv::Event *p_event) override {
        if (p_event->getType() != sv::OUT_EVENT)
            return Object::eventHandler(p_event);
        const sv::Box world = sv::WorldManager::getInstance().getBoundary();
        const sv::Vector place = getPosition();
        sv::Vector velocity = getVelocity();
        if (place.x < 0 || place.x > world.horizontal)
            velocity.x = -velocity.x;
        if (place.y < 0 || place.y > world.vertical)
            velocity.y = -velocity.y;
        setVelocity(velocity);
        return 1;
    }
};

/// Sends each new guest the whole ball, and then in every step what has changed.
class Host : public sv::Object {
  public:
    explicit Host(Ball &new_ball) : ball(new_ball) {
        registerInterest(sv::STEP_EVENT);
        registerInterest(sv::NETWORK_EVENT);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (p_event->getType() == sv::STEP_EVENT)
            return sendChange();
        const auto *network_event = sv::eventCast<sv::EventNetwork>(p_event);
        return network_event ? attend(network_event->getLabel(), network_event->getSocketIndex())
                             : 0;
    }

  private:
    int attend(int label, int guest) {
        if (label == sv::NETWORK_ACCEPTED)
            network.send(sv::makeMessage(ball.serialize(sv::ALL_ATTRIBUTES)), guest);
        if (label == sv::NETWORK_MESSAGE) // Guests are not expected to send anything.
            network.close(guest);
        // The leaving guest still counts.
        if (label == sv::NETWORK_CLOSED && network.getNumConnections() == 1)
            endGame();
        return 1;
    }

    int sendChange() {
        const std::string change = ball.serialize();
        for (int guest = 0; guest < network.getNumConnections() && !change.empty(); ++guest)
            network.send(sv::makeMessage(change), guest);
        return 1;
    }

    sv::NetworkManager &network = sv::NetworkManager::getInstance();
    Ball &ball;
};

/// Copies the host's ball, and ends the game when the connection closes.
class Guest : public sv::Object {
  public:
    explicit Guest(Ball &new_ball) : ball(new_ball) { registerInterest(sv::NETWORK_EVENT); }

    int eventHandler(const sv::Event *p_event) override {
        const auto *network_event = sv::eventCast<sv::EventNetwork>(p_event);
        if (!network_event)
            return 0;
        if (network_event->getLabel() == sv::NETWORK_CLOSED)
            endGame();
        std::string message;
        if (network_event->getLabel() == sv::NETWORK_MESSAGE &&
            sv::NetworkManager::getInstance().receive(message, network_event->getSocketIndex()) >
                0) {
            ball.deserialize(std::string(sv::messageBody(message)));
            std::cout << ball.getPosition().x << ' ' << ball.getPosition().y << std::endl;
        }
        return 1;
    }

  private:
    Ball &ball;
};

int serve(int port) {
    auto &network = sv::NetworkManager::getInstance();
    if (network.setServer(port) != 0)
        return -1;
    network.setMaxSockets(most_guests);
    std::cout << network.getPort() << std::endl;
    auto *ball = sv::spawn<Ball>();
    ball->setPosition({2, 3});
    ball->setVelocity({0.5F, 0.25F});
    sv::spawn<Host>(*ball);
    return 0;
}

int join(int port) {
    sv::spawn<Guest>(*sv::spawn<Ball>());
    return sv::NetworkManager::getInstance().connect(sv::LOOPBACK_ADDRESS, port) >= 0 ? 0 : -1;
}

int play(bool is_server, const std::string &port_text, int steps) {
    int port = std::atoi(port_text.c_str());
    if (port_text == "-")
        std::cin >> port;
    if ((is_server ? serve(port) : join(port)) != 0)
        return -1;
    if (steps > 0)
        sv::spawn<StepLimit>(steps);
    sv::GameManager::getInstance().run();
    return 0;
}

} // namespace

int main(int argc, char *argv[]) {
    const std::string role = argc > 1 ? argv[1] : "";
    if (role != "serve" && (role != "join" || argc < 3)) {
        std::cerr << "usage: shared_ball serve [PORT [STEPS]] | shared_ball join PORT [STEPS]\n";
        return 2;
    }
    auto &game = sv::GameManager::getInstance();
    sv::Config::getInstance().loadConfig("networking:true,");
    const bool is_fine = game.startUp() == 0 && play(role == "serve", argc > 2 ? argv[2] : "0",
                                                     argc > 3 ? std::atoi(argv[3]) : 0) == 0;
    game.shutDown();
    return is_fine ? 0 : 1;
}
