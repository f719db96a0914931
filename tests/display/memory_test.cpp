// What the display takes from the heap, and what it says when there is nothing to take.

#include "selvane/display/DisplayManager.h"
#include "support/WindowTest.h"
#include "support/allocations.h"

namespace {

using sv::DisplayManager;

class DisplayMemoryTest : public test::WindowTest {};

// The library allocates at each of its draw calls that changes the texture: what counts is that
// nothing comes on top.
TEST_F(DisplayMemoryTest, a_full_screen_allocates_no_more_than_one_character) {
    startDisplay();
    const auto allocations_of = [](int rows, const std::string &row) {
        long before = 0;
        for (int frame = 0; frame < 4; ++frame) {
            before = test::allocations(); // In the end, those before the last frame.
            for (int y = 0; y < rows; ++y)
                DisplayManager::getInstance().drawString({0, static_cast<float>(y)}, row);
            DisplayManager::getInstance().swapBuffers();
        }
        return test::allocations() - before;
    };
    const std::string row = "abcdefghijklmnopqrstuvwxyz 0123456789 ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    EXPECT_EQ(allocations_of(24, row), allocations_of(1, "a"));
}

TEST_F(DisplayMemoryTest, each_thing_that_cannot_be_made_fails_the_start_with_its_line) {
    server.emplace();
    configure("");
    startLog();
    DisplayManager &display = DisplayManager::getInstance();
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

} // namespace
