// What happens without memory. All of this program's `new` can be made to fail.

#include "selvane/core/Config.h"
#include "selvane/core/Event.h"
#include "selvane/core/text.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/spawn.h"
#include "support/WindowTest.h"
#include "support/allocations.h"

#include <memory>
#include <new>

namespace {

class Memory : public test::WindowTest {};

TEST_F(Memory, the_display_needs_it_to_start) {
    server.emplace();
    configure("");
    startLog();
    sv::DisplayManager &display = sv::DisplayManager::getInstance();
    const std::string font = std::string("load font from file '") + test::FONT + "'.";
    int made = 0;
    for (const std::string &thing :
         {std::string("allocate window!"), font, std::string("allocate rectangle."),
          std::string("allocate text.")}) {
        test::failNothrowAfter(made++);
        EXPECT_EQ(display.startUp(), -1);
        test::failNothrowAfter(-1);
        expectLogged({"DisplayManager::startUp(): Unable to " + thing});
        display.shutDown();
    }
    EXPECT_EQ(display.startUp(), 0);
}

TEST_F(Memory, a_match_without_it_is_empty) {
    const std::string value(100, 'x');
    const std::string text = "a:1,b:" + value;
    const std::string key = "b";
    startLog();
    int blocks = 0;
    for (std::string found; found != value; ++blocks) {
        test::failAfter(blocks);
        found = sv::match(text, key);
        test::failAfter(-1);
        if (found != value) {
            EXPECT_EQ(found, "");
            EXPECT_EQ(said(), "match(): unable to allocate key array!\n") << blocks;
        }
        sv::match("another text", key);
    }
    EXPECT_GT(blocks, 5) << "nothing was refused";
}

TEST_F(Memory, a_step_without_moves_needs_none) {
    startLog();
    sv::WorldManager &world = sv::WorldManager::getInstance();
    world.startUp();
    sv::Event event;
    event.setType("a type that is longer than most of them");
    for (int i = 0; i < 1000; ++i)
        sv::spawn<sv::Object>()->registerInterest(event.getType());
    const auto step = [&] {
        const int called = world.onEvent(&event);
        world.update();
        return called;
    };
    step();
    test::failAfter(10);
    EXPECT_EQ(step(), 1000);
    EXPECT_EQ(test::callsLeft(), 10);
    test::failAfter(-1);
    world.shutDown();
}

/// With memory: a destructor may not throw.
struct Deleter {
    sv::Object *object;
    ~Deleter() {
        const int left = test::callsLeft();
        test::failAfter(-1);
        delete object;
        test::failAfter(left);
    }
};

/// Files an object in every list anew, and deletes it.
void liveAndDie() {
    auto *o = new (std::nothrow) sv::Object;
    if (!o)
        return;
    const Deleter deleter{o};
    o->setType("a type that is longer than most of them");
    for (const bool is_there : {false, true}) {
        o->setActive(is_there);
        o->setVisible(is_there);
        o->setAltitude(is_there ? 1 : 2);
        o->setSolidness(is_there ? sv::HARD : sv::SPECTRAL);
    }
    o->registerInterest("another type that is longer than most");
    sv::WorldManager::getInstance().moveObject(o, {1, 1});
}

/// Whatever was refused: a solid object is in the way of another one, which nothing else stops.
TEST_F(Memory, a_world_goes_on_after_its_lack) {
    startLog();
    sv::WorldManager &world = sv::WorldManager::getInstance();
    for (const char *graph : {"", "scene_graph:grid,"}) {
        configure(graph);
        sv::Config::getInstance().loadConfig("");
        world.startUp();
        world.setBoundary({{0, 0}, 80, 24});
        int blocks = 0;
        for (int left = 0; left == 0; ++blocks) {
            test::failAfter(blocks);
            try {
                liveAndDie();
            } catch (const std::bad_alloc &) {
                EXPECT_EQ(test::callsLeft(), 0);
            }
            left = test::callsLeft();
            test::failAfter(-1);
            sv::Object wall;
            wall.setPosition({2, 1});
            sv::Object mover;
            mover.setPosition({1, 1});
            EXPECT_EQ(world.moveObject(&mover, {2, 1}), -1) << blocks;
            EXPECT_EQ(world.moveObject(&mover, {1, 2}), 0) << blocks;
            EXPECT_EQ(world.getAllObjects(true).getCount(), 2) << blocks;
        }
        EXPECT_GT(blocks, 20) << "too little was refused";
        world.shutDown();
    }
}

} // namespace
