// What a world step costs by the number of moving solid objects, and an event by the number of its
// listeners.

#include "selvane/core/Event.h"
#include "selvane/core/LogManager.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/spawn.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <random>

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
void update(benchmark::State &state) {
    const World fixture;
    std::mt19937 random(1);
    const float side = std::sqrt(static_cast<float>(state.range(0)) * 100);
    std::uniform_real_distribution<float> place(0, side);
    std::uniform_real_distribution<float> creep(-0.001F, 0.001F);
    for (int i = 0; i < state.range(0); ++i) {
        auto *object = sv::spawn<sv::Object>();
        object->setPosition({place(random), place(random)});
        object->setVelocity({creep(random), creep(random)});
    }
    for ([[maybe_unused]] auto _ : state)
        fixture.world.update();
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

BENCHMARK(update)->Arg(100)->Arg(1000)->Arg(5000)->Unit(benchmark::kMicrosecond);
BENCHMARK(event)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

} // namespace
