// Two programs share a moving ball over TCP, as text.
//
//   shared_ball serve [PORT [STEPS]]   moves the ball; writes its port, a free one for 0 or none
//   shared_ball join PORT [STEPS]      shows that ball; writes its position with every message
//
// Each ends with its window or after STEPS steps; the server also when its last guest leaves, and a
// guest when the server does. SELVANE_CONFIG names a file of settings: "headless:true," in it goes
// without windows. In one line: shared_ball serve | shared_ball join -

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

#include <cstdlib>
#include <iostream>
#include <string>

namespace {

constexpr int most_guests = 8;

void endGame() {
    sv::GameManager::getInstance().setGameOver();
}

/// Ends the game after some steps.
class Curfew : public sv::Object {
  public:
    explicit Curfew(int new_steps) : steps(new_steps) { registerInterest(sv::STEP_EVENT); }

    int eventHandler(const sv::Event *p_event) override {
        const auto *p_step = dynamic_cast<const sv::EventStep *>(p_event);
        if (p_step && p_step->getStepCount() >= steps)
            endGame();
        return p_step ? 1 : 0;
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

    /// Turns back where it has left the world.
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

/// Sends a guest the whole ball when it comes, and in every step what has changed.
class Host : public sv::Object {
  public:
    explicit Host(Ball &new_ball) : ball(new_ball) {
        registerInterest(sv::STEP_EVENT);
        registerInterest(sv::NETWORK_EVENT);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (p_event->getType() == sv::STEP_EVENT)
            return sendChange();
        const auto *p_network = dynamic_cast<const sv::EventNetwork *>(p_event);
        return p_network ? attend(p_network->getLabel(), p_network->getSocketIndex()) : 0;
    }

  private:
    int attend(int label, int guest) {
        if (label == sv::NETWORK_ACCEPTED)
            network.send(sv::makeMessage(ball.serialize(sv::ALL_ATTRIBUTES)), guest);
        if (label == sv::NETWORK_MESSAGE) // Guests have nothing to say.
            network.close(guest);
        // The one that is leaving still counts.
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

/// Makes its ball what the host says, and ends with the connection.
class Guest : public sv::Object {
  public:
    explicit Guest(Ball &new_ball) : ball(new_ball) { registerInterest(sv::NETWORK_EVENT); }

    int eventHandler(const sv::Event *p_event) override {
        const auto *p_network = dynamic_cast<const sv::EventNetwork *>(p_event);
        if (!p_network)
            return 0;
        if (p_network->getLabel() == sv::NETWORK_CLOSED)
            endGame();
        std::string message;
        if (p_network->getLabel() == sv::NETWORK_MESSAGE &&
            sv::NetworkManager::getInstance().receive(message, p_network->getSocketIndex()) > 0) {
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
    auto *p_ball = new Ball;
    p_ball->setPosition({2, 3});
    p_ball->setVelocity({0.5F, 0.25F});
    new Host(*p_ball);
    return 0;
}

int join(int port) {
    new Guest(*new Ball);
    return sv::NetworkManager::getInstance().connect(sv::LOOPBACK_ADDRESS, port) >= 0 ? 0 : -1;
}

int play(bool is_server, const std::string &port_text, int steps) {
    int port = std::atoi(port_text.c_str());
    if (port_text == "-")
        std::cin >> port;
    if ((is_server ? serve(port) : join(port)) != 0)
        return -1;
    if (steps > 0)
        new Curfew(steps);
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
