// What a path search costs: the search alone, with the world's collision tests in both scene
// graphs, and libtcod's, a yardstick from outside. The arguments are the size of the grid and how
// many percent of its cells are blocked. "expansions" counts those of one search; divide by it for
// the cost of one.

#include "selvane/core/Config.h"
#include "selvane/core/EventPath.h"
#include "selvane/core/LogManager.h"
#include "selvane/path/GridSearch.h"
#include "selvane/path/PathFind.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/spawn.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <random>
#include <string>
#include <vector>
#ifdef BENCH_LIBTCOD
#include <libtcod.h>
#endif

namespace {

using sv::Cell;

/// That many percent of the cells at random, but neither the first nor the last.
std::vector<bool> blockedCells(Cell size, long percent = 20) {
    std::mt19937 random(7);
    std::bernoulli_distribution is_blocked(static_cast<double>(percent) / 100);
    std::vector<bool> blocked(std::size_t{size.x} * size.y);
    for (std::size_t i = 1; i + 1 < blocked.size(); ++i)
        blocked[i] = is_blocked(random);
    return blocked;
}

void core(benchmark::State &state) {
    const Cell size{static_cast<std::uint32_t>(state.range(0)),
                    static_cast<std::uint32_t>(state.range(1))};
    const std::vector<bool> blocked = blockedCells(size, state.range(2));
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

#ifdef BENCH_LIBTCOD
void libtcod(benchmark::State &state) {
    const auto columns = static_cast<int>(state.range(0));
    const auto rows = static_cast<int>(state.range(1));
    const Cell size{static_cast<std::uint32_t>(columns), static_cast<std::uint32_t>(rows)};
    const std::vector<bool> blocked = blockedCells(size, state.range(2));
    TCOD_map_t map = TCOD_map_new(columns, rows);
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < columns; ++x)
            TCOD_map_set_properties(map, x, y, true,
                                    !blocked[static_cast<std::size_t>(y * columns + x)]);
    for ([[maybe_unused]] auto _ : state) {
        TCOD_path_t path = TCOD_path_new_using_map(map, std::sqrt(2.0F));
        if (!TCOD_path_compute(path, 0, 0, columns - 1, rows - 1))
            state.SkipWithError("there is no way");
        TCOD_path_delete(path);
    }
    TCOD_map_delete(map);
}
#endif

void world(benchmark::State &state, const std::string &graph) {
    sv::Config::getInstance().loadConfig("scene_graph:" + graph + ",");
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

void grids(benchmark::internal::Benchmark *benchmark) {
    benchmark->Args({80, 24, 20})
        ->Args({256, 256, 20})
        ->Args({1000, 1000, 20})
        ->Args({1000, 1000, 0})
        ->Unit(benchmark::kMicrosecond);
}

BENCHMARK(core)->Apply(grids);
BENCHMARK_CAPTURE(world, simple, "simple")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(world, grid, "grid")->Unit(benchmark::kMicrosecond);
#ifdef BENCH_LIBTCOD
BENCHMARK(libtcod)->Apply(grids);
#endif

} // namespace
