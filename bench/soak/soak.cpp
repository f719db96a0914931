// Runs a busy world without a window for very many steps, without waiting: objects that are
// made, collide and are deleted, view objects, path searches, and peers that connect, talk, send
// nonsense and hang up. Every round of a thousand steps is alike and leaves the world as it was, so
// the heap must be the same size after each; if it is not, the exit status is 1. Started by
// tools/soak.

#include "inhabitants.h"
#include "memory.h"
#include "selvane/core/Config.h"
#include "selvane/core/EventNetwork.h"
#include "selvane/core/EventStep.h"
#include "selvane/core/EventView.h"
#include "selvane/core/LogManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/network/NetworkManager.h"
#include "selvane/platform/ManualTime.h"
#include "selvane/platform/sockets.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/world/ViewObject.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/spawn.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace {

using soak::tally;

constexpr int steps_a_round = 1000;
constexpr long tolerance_bytes = 1024;

/// The other end of the game's connection. It echoes most of what it receives, sends nonsense from
/// time to time, and never stays long. It stands for another program, so what it does must not
/// change what the world does: it throws dice of its own.
class Peer {
  public:
    ~Peer() { hangUp(); }

    void reseed() { generator.seed(1); }

    void step() {
        if (socket == sv::platform::no_socket)
            connect();
        else if (--steps_left <= 0)
            hangUp();
        else
            talk();
    }

    void hangUp() {
        if (socket != sv::platform::no_socket)
            sv::platform::closeSocket(socket);
        socket = sv::platform::no_socket;
    }

  private:
    void connect() {
        socket = sv::platform::connectTo(sv::LOOPBACK_ADDRESS, port);
        steps_left = 10 + choice(20);
    }

    int choice(int below) { return std::uniform_int_distribution<int>(0, below - 1)(generator); }

    void talk() {
        if (choice(20) == 0)
            send(std::string("\xff\xff\xff\xff", 4)); // A nonsense length.
        else if (choice(10) != 0)                     // What is left unread makes the end a reset.
            echo();
    }

    void echo() {
        char buffer[4096];
        const int size = sv::platform::receive(socket, buffer, sizeof buffer);
        if (size > 0)
            send(std::string(buffer, static_cast<std::size_t>(size)));
    }

    void send(const std::string &bytes) {
        sv::platform::send(socket, bytes.data(), static_cast<int>(bytes.size()));
    }

    const int port = sv::NetworkManager::getInstance().getPort();
    sv::platform::Socket socket = sv::platform::no_socket;
    int steps_left = 0;
    std::mt19937 generator;
};

/// Sends itself to a peer in every step, and reads itself back from what it echoes.
class Shared : public sv::Object {
  public:
    Shared() {
        setSolidness(sv::SPECTRAL);
        registerInterest(sv::STEP_EVENT);
        registerInterest(sv::NETWORK_EVENT);
    }

    int eventHandler(const sv::Event *p_event) override {
        sv::NetworkManager &network = sv::NetworkManager::getInstance();
        if (p_event->getType() == sv::STEP_EVENT) {
            setPosition(soak::anyPlace());
            if (network.getNumConnections() > 0)
                network.send(sv::makeMessage(serialize("POSITION,SPEED,PATH,")), 0);
            return 1;
        }
        const auto *network_event = sv::eventCast<sv::EventNetwork>(p_event);
        if (network_event)
            receive(*network_event, network);
        return network_event ? 1 : 0;
    }

  private:
    void receive(const sv::EventNetwork &event, sv::NetworkManager &network) {
        if (event.getLabel() == sv::NETWORK_ACCEPTED)
            ++tally().connections;
        std::string message;
        if (event.getLabel() != sv::NETWORK_MESSAGE ||
            network.receive(message, event.getSocketIndex()) <= 0)
            return;
        ++tally().messages;
        deserialize(std::string(sv::messageBody(message)));
    }
};

struct Round {
    long heap = 0;           // Bytes, at the round's end.
    long resident = 0;       // Bytes.
    double microseconds = 0; // Processor time per step.
};

/// Measures each round at its end.
class Meter {
  public:
    /// Allocates all the memory it will need, so that it does not measure itself.
    explicit Meter(int steps) : rounds(static_cast<std::size_t>(steps / steps_a_round)) {
        rounds.clear();
    }

    void endRound() {
        const double ticks = static_cast<double>(std::clock() - begin);
        rounds.push_back({soak::heapBytes(), soak::residentBytes(),
                          ticks * 1e6 / CLOCKS_PER_SEC / steps_a_round});
        begin = std::clock();
    }

    /// Prints a line for each tenth of the rounds. The first round stands alone: it fills caches.
    void print() const {
        std::puts("   steps    heap KB    RSS KB    us a step");
        const std::size_t tenth = std::max<std::size_t>(rounds.size() / 10, 1);
        printRounds(0, 1);
        for (std::size_t i = 1; i < rounds.size(); i += tenth)
            printRounds(i, std::min(i + tenth, rounds.size()));
    }

    /// Whether the heap was the same size after each round as after the first.
    bool isFlat() const {
        return std::all_of(rounds.begin(), rounds.end(), [this](const Round &round) {
            return std::abs(round.heap - rounds.front().heap) < tolerance_bytes;
        });
    }

  private:
    void printRounds(std::size_t first, std::size_t end) const {
        double sum = 0;
        for (std::size_t i = first; i < end; ++i)
            sum += rounds[i].microseconds;
        const Round &last = rounds[end - 1];
        std::printf("%8zu %10.1f %9.1f %12.2f\n", end * steps_a_round,
                    static_cast<double>(last.heap) / 1024,
                    static_cast<double>(last.resident) / 1024,
                    sum / static_cast<double>(end - first));
    }

    std::vector<Round> rounds;
    std::clock_t begin = std::clock();
};

/// Makes and deletes the other objects, sends them events, and ends each round.
class Director : public sv::Object {
  public:
    Director(int new_steps, Meter &new_meter) : steps(new_steps), meter(new_meter) {
        setSolidness(sv::SPECTRAL);
        registerInterest(sv::STEP_EVENT);
        for (int i = 0; i < walls; ++i)
            sv::spawn<soak::Wall>(soak::anyPlace());
        for (soak::Walker *&walker : walkers)
            walker = sv::spawn<soak::Walker>();
        for (const int place : {sv::TOP_LEFT, sv::TOP_RIGHT}) {
            auto *view = sv::spawn<sv::ViewObject>();
            view->setLocation(place);
            view->setViewString("Points");
        }
        sv::spawn<Shared>();
    }

    int eventHandler(const sv::Event *p_event) override {
        const auto *step_event = sv::eventCast<sv::EventStep>(p_event);
        if (!step_event)
            return 0;
        const int step = step_event->getStepCount();
        const int in_round = step % steps_a_round;
        if (in_round == 0)
            beginRound(step);
        if (in_round < steps_a_round - quiet_steps)
            stir(in_round);
        else if (in_round == steps_a_round - quiet_steps)
            clear();
        if (step == steps)
            sv::GameManager::getInstance().setGameOver();
        return 1;
    }

  private:
    static constexpr int walls = 60;
    // At a round's end, until marked objects are deleted and the peer's end is noticed.
    static constexpr int quiet_steps = 20;

    void beginRound(int step) {
        if (step > 0)
            meter.endRound();
        soak::reseed();
        peer.reseed();
        for (soak::Walker *walker : walkers)
            walker->setOut();
    }

    void stir(int in_round) {
        sv::WorldManager &world = sv::WorldManager::getInstance();
        for (int i = soak::choice(4); i > 0; --i)
            sv::spawn<soak::Flyer>();
        const sv::EventView points("Points", soak::choice(10), true);
        tally().view_events += world.onEvent(&points);
        if (in_round % 50 == 0) {
            sv::Event alarm;
            alarm.setType("alarm");
            world.onEvent(&alarm);
        }
        peer.step();
    }

    void clear() {
        sv::WorldManager &world = sv::WorldManager::getInstance();
        world.markForDelete(world.objectsOfType("Flyer"));
        for (soak::Walker *walker : walkers)
            walker->goHome();
        peer.hangUp();
        const sv::EventView nothing("Points", 0, false);
        world.onEvent(&nothing);
    }

    int steps;
    Meter &meter;
    std::array<soak::Walker *, 5> walkers{};
    Peer peer;
};

void printTally() {
    const soak::Tally &t = tally();
    std::printf("%ld objects born and %ld gone, %ld collisions, %ld view events,\n", t.born, t.died,
                t.collisions, t.view_events);
    std::printf("%ld paths found and %ld not, %ld connections, %ld messages\n", t.paths_found,
                t.paths_missing, t.connections, t.messages);
}

/// Returns false if the game does not start.
bool play(int steps, Meter &meter) {
    sv::ManualTime time; // No step waits, and all steps are repeatable.
    time.during_sleep = [&time] { time.sleeps.clear(); };
    sv::Config::getInstance().loadConfig("headless:true,networking:true,logfile:soak.log,");
    sv::GameManager &game = sv::GameManager::getInstance();
    if (game.startUp() != 0 || sv::NetworkManager::getInstance().setServer(0) != 0)
        return false;
    std::ofstream("soak-spr.txt") << "2\n3\n1\n2\ngreen\n<o>\n(O)\n";
    sv::ResourceManager::getInstance().loadSprite("soak-spr.txt", "flyer");
    sv::spawn<Director>(steps, meter);
    game.run();
    game.shutDown();
    return true;
}

} // namespace

int main(int argc, char **argv) {
    const int steps = argc > 1 ? std::atoi(argv[1]) : 1'000'000;
    if (steps < 2 * steps_a_round) {
        std::fprintf(stderr, "usage: soak [STEPS], %d or more\n", 2 * steps_a_round);
        return 2;
    }
    Meter meter(steps);
    if (!play(steps, meter)) {
        std::fputs("soak: the game does not start\n", stderr);
        return 2;
    }
    meter.print();
    printTally();
    std::puts(meter.isFlat() ? "The heap is flat." : "THE HEAP IS NOT FLAT.");
    return meter.isFlat() ? EXIT_SUCCESS : EXIT_FAILURE;
}
