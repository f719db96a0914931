// What a world step costs by the number of objects: at rest, moving, and colliding, in both scene
// graphs; and the same boxes in Chipmunk, a yardstick from outside.

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/spawn.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <random>
#include <string>
#include <vector>
#ifdef BENCH_CHIPMUNK
#include <chipmunk/chipmunk.h>
#endif

namespace {

struct Mover {
    sv::Vector position;
    sv::Vector velocity;
};

/// A square world in which each box has that many cells to itself on average. They move so slowly
/// that the last step has as many collisions as the first.
struct Scene {
    Scene(long count, float cells_each) : side(std::sqrt(static_cast<float>(count) * cells_each)) {
        std::mt19937 random(1);
        std::uniform_real_distribution<float> place(0, side);
        std::uniform_real_distribution<float> creep(-0.001F, 0.001F);
        for (long i = 0; i < count; ++i)
            movers.push_back({{place(random), place(random)}, {creep(random), creep(random)}});
    }

    float side;
    std::vector<Mover> movers;
};

enum Kind : int { RESTING, MOVING, COLLIDING };

float cellsEach(Kind kind) {
    return kind == COLLIDING ? 2 : 100;
}

void step(benchmark::State &state, const std::string &graph, Kind kind) {
    const Scene scene(state.range(0), cellsEach(kind));
    const std::string lines = std::to_string(static_cast<int>(scene.side / 10) + 1);
    sv::Config::getInstance().loadConfig("scene_graph:" + graph + ",grid_width:" + lines +
                                         ",grid_height:" + lines + ",");
    sv::LogManager::getInstance().setLogLevel(-1);
    sv::WorldManager &world = sv::WorldManager::getInstance();
    world.startUp();
    world.setBoundary({{0, 0}, scene.side, scene.side});
    for (const Mover &mover : scene.movers) {
        auto *object = sv::spawn<sv::Object>();
        object->setPosition(mover.position);
        if (kind != RESTING)
            object->setVelocity(mover.velocity);
    }
    for ([[maybe_unused]] auto _ : state)
        world.update();
    world.shutDown();
}

void counts(benchmark::internal::Benchmark *benchmark) {
    benchmark->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK_CAPTURE(step, grid_resting, "grid", RESTING)->Apply(counts);
BENCHMARK_CAPTURE(step, grid_moving, "grid", MOVING)->Apply(counts);
BENCHMARK_CAPTURE(step, grid_colliding, "grid", COLLIDING)->Apply(counts);
BENCHMARK_CAPTURE(step, simple_resting, "simple", RESTING)->Apply(counts);
BENCHMARK_CAPTURE(step, simple_moving, "simple", MOVING)->Apply(counts);
BENCHMARK_CAPTURE(step, simple_colliding, "simple", COLLIDING)->Apply(counts);

#ifdef BENCH_CHIPMUNK
void chipmunk(benchmark::State &state, Kind kind) {
    const Scene scene(state.range(0), cellsEach(kind));
    cpSpace *space = cpSpaceNew();
    std::vector<cpBody *> bodies;
    std::vector<cpShape *> shapes;
    for (const Mover &mover : scene.movers) {
        bodies.push_back(cpSpaceAddBody(space, cpBodyNew(1, INFINITY)));
        cpBodySetPosition(bodies.back(), cpv(mover.position.x, mover.position.y));
        cpBodySetVelocity(bodies.back(), cpv(mover.velocity.x, mover.velocity.y));
        shapes.push_back(cpSpaceAddShape(space, cpBoxShapeNew(bodies.back(), 0.99, 0.99, 0)));
    }
    for ([[maybe_unused]] auto _ : state)
        cpSpaceStep(space, 1);
    for (cpShape *shape : shapes)
        cpShapeFree(shape);
    for (cpBody *body : bodies)
        cpBodyFree(body);
    cpSpaceFree(space);
}

BENCHMARK_CAPTURE(chipmunk, moving, MOVING)->Apply(counts);
BENCHMARK_CAPTURE(chipmunk, colliding, COLLIDING)->Apply(counts);
#endif

} // namespace
