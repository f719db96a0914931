// What a minute of steps costs a server without a window that greets its peers and reads what they
// send: left alone, and with ten thousand attempts to connect. Steps follow each other without a
// wait, and the peers act between them. "Time" is the processor time of a mean step, "worst_us"
// that of the longest; a frame has 33000 us.

#include "selvane/core/Config.h"
#include "selvane/core/EventNetwork.h"
#include "selvane/core/LogManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/network/NetworkManager.h"
#include "selvane/network/message.h"
#include "selvane/platform/sockets.h"
#include "selvane/platform/system.h"
#include "selvane/world/Object.h"
#include "selvane/world/spawn.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <ctime>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace {

namespace platform = sv::platform;

constexpr std::size_t steps = 1800; // A minute of the default frame time.
constexpr int most_peers = 32;

/// The system's clock with a sleep that takes no time and calls `pause` instead. A step is what
/// lies between two sleeps.
class Stopwatch final : public platform::TimeSource {
  public:
    explicit Stopwatch(std::function<void()> new_pause) : pause(std::move(new_pause)) {
        platform::setTimeSource(this);
    }
    ~Stopwatch() { platform::setTimeSource(nullptr); }
    Stopwatch(const Stopwatch &) = delete;
    Stopwatch &operator=(const Stopwatch &) = delete;

    platform::UtcTime utcNow() override { return platform::systemTimeSource().utcNow(); }
    bool localTime(std::tm &local) override {
        return platform::systemTimeSource().localTime(local);
    }
    int beginTimerPeriod(unsigned /*milliseconds*/) override { return 0; }
    int endTimerPeriod(unsigned /*milliseconds*/) override { return 0; }

    void sleep(int /*milliseconds*/) override {
        step_seconds.push_back(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
        pause();
        begin = std::clock();
    }

    std::vector<double> step_seconds;

  private:
    std::function<void()> pause;
    std::clock_t begin = std::clock();
};

class Host : public sv::Object {
  public:
    Host() { registerInterest(sv::NETWORK_EVENT); }

    int eventHandler(const sv::Event *p_event) override {
        const auto *network_event = sv::eventCast<sv::EventNetwork>(p_event);
        if (!network_event)
            return 0;
        sv::NetworkManager &network = sv::NetworkManager::getInstance();
        std::string message;
        if (network_event->getLabel() == sv::NETWORK_ACCEPTED)
            network.send(sv::makeMessage("hello"), network_event->getSocketIndex());
        if (network_event->getLabel() == sv::NETWORK_MESSAGE)
            network.receive(message, network_event->getSocketIndex());
        return 1;
    }
};

/// Peers that connect, misbehave, and leave without reading their greeting, which resets the
/// connection.
class Storm {
  public:
    explicit Storm(int new_port) : port(new_port) {}
    ~Storm() {
        while (!sockets.empty())
            dropOldest();
    }
    Storm(const Storm &) = delete;
    Storm &operator=(const Storm &) = delete;

    void attempt() {
        const std::string &bytes = bad[attempts++ % bad.size()];
        const platform::Socket socket = platform::connectTo(sv::LOOPBACK_ADDRESS, port, 0);
        if (socket == platform::no_socket)
            return;
        sockets.push_back(socket);
        platform::send(socket, bytes.data(), static_cast<int>(bytes.size()));
        if (sockets.size() > 60)
            dropOldest();
    }

  private:
    static std::string flood() {
        std::string bytes;
        for (int i = 0; i < 70; ++i)
            bytes += sv::makeMessage(std::string(1000, 'x'));
        return bytes;
    }

    void dropOldest() {
        platform::closeSocket(sockets.front());
        sockets.pop_front();
    }

    int port;
    std::size_t attempts = 0;
    std::deque<platform::Socket> sockets;
    const std::vector<std::string> bad = {
        "abc", std::string(8, '\x7f'), flood(),
        sv::makeMessage(std::string(60000, 'x')).substr(0, 50000)};
};

void minute(benchmark::State &state) {
    sv::LogManager::getInstance().setLogLevel(-1);
    sv::Config::getInstance().loadConfig("headless:true,networking:true,");
    sv::GameManager &game = sv::GameManager::getInstance();
    sv::NetworkManager &network = sv::NetworkManager::getInstance();
    if (game.startUp() != 0 || network.setServer(0) != 0)
        state.SkipWithError("there is no server");
    network.setMaxSockets(most_peers);
    sv::spawn<Host>();
    for ([[maybe_unused]] auto _ : state) {
        Storm storm(network.getPort());
        std::size_t paused = 0;
        Stopwatch watch([&] {
            for (int i = 0; i < state.range(0); ++i)
                storm.attempt();
            game.setGameOver(++paused == steps);
        });
        game.run();
        double sum = 0;
        for (const double seconds : watch.step_seconds)
            sum += seconds;
        state.SetIterationTime(sum / static_cast<double>(watch.step_seconds.size()));
        std::sort(watch.step_seconds.begin(), watch.step_seconds.end());
        state.counters["worst_us"] = watch.step_seconds.back() * 1e6;
        state.counters["p99_us"] = watch.step_seconds[watch.step_seconds.size() * 99 / 100] * 1e6;
    }
    game.shutDown();
}

BENCHMARK(minute)
    ->ArgName("attempts_a_step")
    ->Arg(0)
    ->Arg(6)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

} // namespace
