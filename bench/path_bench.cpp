// What a path search costs on grids with a fifth of the cells blocked: the search alone, and with
// the world's collision tests. "expansions" counts those of one search; divide by it for the cost
// of one.

#include "selvane/core/EventPath.h"
#include "selvane/core/LogManager.h"
#include "selvane/path/GridSearch.h"
#include "selvane/path/PathFind.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/spawn.h"

#include <benchmark/benchmark.h>
#include <random>
#include <vector>

namespace {

using sv::Cell;

/// A fifth of the cells at random, but neither the first nor the last.
std::vector<bool> blockedCells(Cell size) {
    std::mt19937 random(7);
    std::bernoulli_distribution is_blocked(0.2);
    std::vector<bool> blocked(std::size_t{size.x} * size.y);
    for (std::size_t i = 1; i + 1 < blocked.size(); ++i)
        blocked[i] = is_blocked(random);
    return blocked;
}

void core(benchmark::State &state) {
    const Cell size{static_cast<std::uint32_t>(state.range(0)),
                    static_cast<std::uint32_t>(state.range(1))};
    const std::vector<bool> blocked = blockedCells(size);
    const sv::CellTest is_blocked = [&](Cell cell) {
        return blocked[std::size_t{cell.y} * size.x + cell.x];
    };
    const sv::CellTest is_end = [](Cell /*cell*/) { return false; };
    int expansions = 0;
    for ([[maybe_unused]] auto _ : state) {
        sv::GridSearch search(size, {0, 0}, {size.x - 1, size.y - 1});
        for (expansions = 1; search.expand(is_blocked, is_end); ++expansions) {
        }
        if (!search.isFound())
            state.SkipWithError("there is no way");
    }
    state.counters["expansions"] = expansions;
}

void world(benchmark::State &state) {
    sv::LogManager::getInstance().setLogLevel(-1);
    sv::WorldManager &world = sv::WorldManager::getInstance();
    world.startUp();
    world.setBoundary({{0, 0}, 80, 24});
    const std::vector<bool> blocked = blockedCells({80, 24});
    for (std::size_t y = 0; y < 24; ++y)
        for (std::size_t x = 0; x < 80; ++x)
            if (blocked[y * 80 + x])
                sv::spawn<sv::Object>()->setPosition(
                    {static_cast<float>(x), static_cast<float>(y)});
    auto *object = sv::spawn<sv::Object>();
    object->setPosition({0, 0});
    int expansions = 0;
    for ([[maybe_unused]] auto _ : state) {
        sv::PathFind search(object, {79, 23});
        for (expansions = 1; search.cycleOnce() == sv::PATH_SEARCHING; ++expansions) {
        }
        if (search.getPath().empty())
            state.SkipWithError("there is no way");
    }
    state.counters["expansions"] = expansions;
    world.shutDown();
}

BENCHMARK(core)
    ->Args({80, 24})
    ->Args({256, 256})
    ->Args({1000, 1000})
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(world)->Unit(benchmark::kMicrosecond);

} // namespace
