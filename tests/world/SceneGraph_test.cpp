// The two scene graphs: random worlds whose objects change everything in the middle of a step are
// played in both, and must not differ in anything.

#include "selvane/core/Config.h"
#include "selvane/world/geometry.h"
#include "selvane/world/spawn.h"
#include "support/WorldTest.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <random>
#include <regex>

namespace sv {
namespace {

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

/// A world of some thirty objects, and all that is seen of it.
class WildWorld {
  public:
    WildWorld(WorldManager &new_world, unsigned seed) : world(new_world), random(seed) {
        world.setBoundary({{0, 0}, 40, 30});
        for (int i = 0; i < 30; ++i)
            add();
    }

    std::string play(int steps) {
        for (int step = 0; step < steps; ++step) {
            world.update();
            note("step");
            for (int altitude = 0; altitude <= MAX_ALTITUDE; ++altitude)
                note("layer", world.getSceneGraph().visibleObjects(altitude));
            note("objects", world.getAllObjects(true));
            note("Wild", world.objectsOfType("Wild"));
            for (int i = 0; i < 10; ++i)
                probe({anyNumber(), anyNumber()});
        }
        return seen;
    }

  private:
    class Wild : public Object {
      public:
        explicit Wild(WildWorld &new_home) : home(new_home) {}
        int eventHandler(const Event *p_event) override {
            home.note(p_event->getType() + " of " + std::to_string(getId()));
            if (home.upTo(3) == 0)
                home.changeOne();
            return 1;
        }

      private:
        WildWorld &home;
    };

    unsigned upTo(unsigned count) { return static_cast<unsigned>(random() % count); }
    float nearby() { return static_cast<float>(upTo(500)) / 10 - 5; }
    float anyNumber() {
        static constexpr float numbers[] = {0, -1, 40, 1e6F, -3e38F, infinite, -infinite, nan};
        return upTo(4) == 0 ? numbers[upTo(std::size(numbers))] : nearby();
    }
    Box anyBox() {
        switch (upTo(4)) {
        case 0:
            return {{anyNumber(), anyNumber()}, anyNumber(), anyNumber()};
        case 1:
            return {{-nearby(), -1}, nearby(), 2};
        case 2:
            return {};
        default:
            return Box::cell();
        }
    }

    void add() {
        auto *p_o = spawn<Wild>(*this);
        p_o->setType(upTo(2) == 0 ? "Wild" : "Tame");
        p_o->setPosition({nearby(), nearby()});
        p_o->setBox(anyBox());
        p_o->setSolidness(static_cast<Solidness>(upTo(3)));
        p_o->setVelocity({nearby() / 20, nearby() / 20});
        p_o->setAvoidCollisions(upTo(4) == 0);
    }

    void changeOne() {
        const ObjectList all = world.getAllObjects(true);
        Object *p_o = all.at(static_cast<int>(upTo(static_cast<unsigned>(all.getCount()) + 1)));
        if (!p_o)
            return add();
        const std::function<void()> changes[] = {
            [&] {
                p_o->setPosition({anyNumber(), anyNumber()});
            },
            [&] {
                world.moveObject(p_o, {anyNumber(), nearby()});
            },
            [&] { upTo(4) == 0 ? delete p_o : add(); },
            [&] { world.markForDelete(p_o); },
            [&] { p_o->setSolidness(static_cast<Solidness>(upTo(3))); },
            [&] { p_o->setAltitude(static_cast<int>(upTo(5))); },
            [&] { p_o->setActive(upTo(2) == 0); },
            [&] { p_o->setVisible(upTo(2) == 0); },
            [&] { p_o->setBox(anyBox()); },
            [&] { p_o->setAnimation(Animation(), true); },
            [&] { world.insertObject(p_o); },
            [&] {
                world.setBoundary({{nearby(), 0}, anyNumber(), 30});
            },
        };
        changes[upTo(std::size(changes))]();
    }

    void probe(Vector where) {
        const ObjectList all = world.getAllObjects();
        const Object *p_o = all.at(static_cast<int>(upTo(40)));
        if (!p_o)
            return;
        const ObjectList touched = world.getCollisions(p_o, where);
        note("touched", touched);
        const Box box = getWorldBox(p_o, where);
        for (Object *other : all)
            EXPECT_TRUE(touched.contains(other) || other == p_o || !other->isSolid() ||
                        !boxIntersectsBox(box, getWorldBox(other)));
        const Vector goal{nearby(), nearby()};
        const bool is_blocked = std::any_of(touched.begin(), touched.end(), [&](Object *other) {
            return other->getSolidness() == HARD &&
                   !boxIntersectsBox({goal, 0, 0}, getWorldBox(other));
        });
        EXPECT_EQ(world.getSceneGraph().isBlocked(p_o, where, goal), is_blocked);
    }

    void note(const std::string &what, const ObjectList &objects = {}) {
        seen += what;
        for (const Object *p_o : objects)
            seen += " " + std::to_string(p_o->getId());
        seen += "\n";
    }

    WorldManager &world;
    std::mt19937 random;
    std::string seen;
};

struct SceneGraphs : test::WorldTest {
    /// All that is seen of the world of that seed, and the log.
    std::string played(const std::string &config, unsigned seed) {
        world.shutDown();
        world.reset();
        Config::getInstance().loadConfig(config);
        EXPECT_EQ(world.startUp(), 0);
        said();
        const std::string seen = WildWorld(world, seed).play(40);
        static const std::regex address("0x[0-9a-f]+");
        return seen + std::regex_replace(said(), address, "0x");
    }
};

TEST_F(SceneGraphs, random_worlds_are_alike_in_both) {
    for (const char *size : {"grid_width:20,grid_height:8,", "grid_width:0,grid_height:300,"})
        for (unsigned seed = 1; seed <= 30 && !HasFailure(); ++seed) {
            SCOPED_TRACE(std::string(size) + " seed " + std::to_string(seed));
            const std::string simple = played(std::string("scene_graph:simple,") + size, seed);
            const std::string grid = played(std::string("scene_graph:grid,") + size, seed);
            EXPECT_NE(simple.find("sv-collision"), std::string::npos);
            const auto differs =
                std::mismatch(simple.begin(), simple.end(), grid.begin(), grid.end());
            if (differs.first != simple.end() || differs.second != grid.end())
                ADD_FAILURE() << "from here: "
                              << std::string(differs.first, simple.end()).substr(0, 300)
                              << "\n--- in the grid: "
                              << std::string(differs.second, grid.end()).substr(0, 300);
        }
}

} // namespace
} // namespace sv
