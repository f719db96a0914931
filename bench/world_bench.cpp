// What a world step costs by the number of moving solid objects, what recording it adds, and an
// event by the number of its listeners.

#include "selvane/core/Event.h"
#include "selvane/core/LogManager.h"
#include "selvane/record/Recorder.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/spawn.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace {

/// A freshly started world for each benchmark, without log lines.
class World {
  public:
    World() {
        sv::LogManager::getInstance().setLogLevel(-1);
        world.startUp();
        world.setBoundary({{0, 0}, 1000, 1000});
    }

    ~World() { world.shutDown(); }
    World(const World &) = delete;
    World &operator=(const World &) = delete;

    sv::WorldManager &world = sv::WorldManager::getInstance();
};

/// Each object has a hundred cells to itself on average and moves slowly, so that there are as many
/// collisions in the last step as in the first.
void populate(long count) {
    std::mt19937 random(1);
    const float side = std::sqrt(static_cast<float>(count) * 100);
    std::uniform_real_distribution<float> place(0, side);
    std::uniform_real_distribution<float> creep(-0.001F, 0.001F);
    for (long i = 0; i < count; ++i) {
        auto *object = sv::spawn<sv::Object>();
        object->setPosition({place(random), place(random)});
        object->setVelocity({creep(random), creep(random)});
    }
}

void update(benchmark::State &state) {
    const World fixture;
    populate(state.range(0));
    for ([[maybe_unused]] auto _ : state)
        fixture.world.update();
}

/// The same, written to a file: to be compared with update().
void recordedUpdate(benchmark::State &state) {
    const World fixture;
    populate(state.range(0));
    sv::Recorder &recorder = sv::Recorder::getInstance();
    const std::string file = std::filesystem::temp_directory_path() / "world_bench.record";
    recorder.start(file);
    const auto before = std::filesystem::file_size(file);
    for ([[maybe_unused]] auto _ : state) {
        fixture.world.update();
        recorder.endStep();
    }
    recorder.stop();
    state.counters["bytes"] =
        benchmark::Counter(static_cast<double>(std::filesystem::file_size(file) - before),
                           benchmark::Counter::kAvgIterations);
    std::filesystem::remove(file);
}

class Listener : public sv::Object {
  public:
    Listener() { registerInterest("ping"); }
    int eventHandler(const sv::Event * /*p_event*/) override { return ++heard; }

  private:
    int heard = 0;
};

void event(benchmark::State &state) {
    const World fixture;
    for (int i = 0; i < state.range(0); ++i)
        sv::spawn<Listener>();
    sv::Event ping;
    ping.setType("ping");
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(fixture.world.onEvent(&ping));
}

/// The floor of event(): nothing but the calls.
void calls(benchmark::State &state) {
    const World fixture;
    std::vector<sv::Object *> listeners;
    for (int i = 0; i < state.range(0); ++i)
        listeners.push_back(sv::spawn<Listener>());
    sv::Event ping;
    ping.setType("ping");
    for ([[maybe_unused]] auto _ : state) {
        for (sv::Object *listener : listeners)
            listener->eventHandler(&ping);
        benchmark::ClobberMemory();
    }
}

BENCHMARK(update)->Arg(100)->Arg(1000)->Arg(5000)->Unit(benchmark::kMicrosecond);
BENCHMARK(recordedUpdate)->Arg(100)->Arg(1000)->Arg(5000)->Unit(benchmark::kMicrosecond);
BENCHMARK(event)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kNanosecond);
BENCHMARK(calls)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kNanosecond);

} // namespace
