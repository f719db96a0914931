// What happens without memory. All of this program's `new` can be made to fail.

#include "selvane/core/Event.h"
#include "selvane/core/text.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/spawn.h"
#include "support/WindowTest.h"
#include "support/allocations.h"

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

} // namespace
