#include "selvane/display/ScreenCapture.h"

#include "selvane/core/Config.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/testing/Session.h"
#include "selvane/world/Shape.h"
#include "support/WindowTest.h"

namespace sv {
namespace {

constexpr char GRID[] = "window_horizontal_pixels:200,window_vertical_pixels:200,"
                        "window_horizontal_chars:20,window_vertical_chars:10,";

using ScreenCaptureTest = test::WindowTest;

void drawScene() {
    DisplayManager &display = DisplayManager::getInstance();
    display.setOrigin({100, 50});
    display.drawString({101, 51}, "left out", LEFT_JUSTIFIED, RED);
    display.drawString({106, 51}, "over ", LEFT_JUSTIFIED, CYAN);
    display.drawString({119, 50}, "cut", LEFT_JUSTIFIED, BLACK);
    display.drawString({102.6F, 51.6F}, "a\tb\xC3\x1f~", LEFT_JUSTIFIED, CUSTOM);
    display.drawCh({115, 51}, '*', 1, 2, 3);
    display.drawCh({99, 51}, 'x');
    display.drawCh({100, 60}, 'x');
    display.setOrigin({});
}

TEST_F(ScreenCaptureTest, reads_the_same_with_and_without_window) {
    DisplayManager &display = DisplayManager::getInstance();
    const std::string scenes = "                   c\n"
                               " left over     *\n"
                               "   a b??~";
    for (const bool headless : {false, true}) {
        SCOPED_TRACE(headless);
        captureScreen();
        if (headless)
            Config::getInstance().loadConfig("headless:true," + std::string(GRID));
        else
            startDisplay(GRID);
        EXPECT_EQ(display.startUp(), headless ? 0 : -1) << "the window is open already";
        display.setShake(1, 1, 9);
        drawScene();
        EXPECT_EQ(screenText(), "") << "not shown yet";
        EXPECT_EQ(display.swapBuffers(), 0);
        EXPECT_EQ(screenText(), scenes);
        EXPECT_EQ(screenColors(), "                   k\n rrrr cccc     *\n   w wwww");
        display.swapBuffers();
        EXPECT_EQ(screenText(), "") << "each frame begins empty";
        drawScene();
        display.swapBuffers();
        display.shutDown();
        EXPECT_EQ(screenText(), scenes);
        ASSERT_EQ(display.startUp(), 0);
        EXPECT_EQ(screenText(), "");
        display.shutDown();
        captureScreen(false);
    }
}

TEST_F(ScreenCaptureTest, figures_cover_their_cells) {
    Session session({.config = GRID});
    session.start();
    Shape shape;
    shape.setSize(60); // Pixels; a cell has 10 by 20.
    shape.setColor(YELLOW);
    for (const int type : {SQUARE, CIRCLE, TRIANGLE}) { // A square turns those that come after it.
        shape.setType(type);
        shape.draw({7.0F * static_cast<float>(type), 4});
    }
    shape.setSize(0);
    shape.draw({7, 0});
    shape.setSize(60);
    shape.setAlpha(0);
    shape.draw({7, 1});
    session.play();
    EXPECT_EQ(session.screen(), R"(


        ####
#       #####
##         #
###
###
##)");
    EXPECT_EQ(session.colors().find("yyyy"), session.screen().find("####"));
}

TEST_F(ScreenCaptureTest, headless_draws_only_while_capturing) {
    DisplayManager &display = DisplayManager::getInstance();
    Config::getInstance().loadConfig("headless:true");
    startLog(5);
    captureScreen();
    for (const bool is_wanted : {true, false}) {
        display.startUp();
        captureScreen(is_wanted);
        said();
        const int expected = is_wanted ? 0 : -1;
        EXPECT_EQ(display.drawCh({1, 1}, 'x'), expected);
        EXPECT_EQ(display.drawString({1, 1}, "x"), expected);
        EXPECT_EQ(display.swapBuffers(), expected);
        EXPECT_EQ(screenText(), is_wanted ? "\n x" : "");
        Shape().draw({1, 1});
        EXPECT_EQ(said(), is_wanted ? "" : "Shape::draw(): DisplayManager window not defined.\n");
    }
}

} // namespace
} // namespace sv
