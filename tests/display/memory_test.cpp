// The program's memory is the test's own here, so that it can run out.

#include "selvane/display/DisplayManager.h"
#include "support/WindowTest.h"
#include "support/allocations.h"

namespace {

class DisplayMemoryTest : public test::WindowTest {};

TEST_F(DisplayMemoryTest, failed_allocations_fail_the_start) {
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

} // namespace
