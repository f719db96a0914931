// What the display takes from the heap, and what it says when there is nothing to take.

#include "display/DisplayManager.h"
#include "support/WindowTest.h"
#include "support/allocations.h"
#include "world/Shape.h"

#include <SFML/Graphics/CircleShape.hpp>
#include <SFML/Graphics/RenderWindow.hpp>

namespace {

using sv::DisplayManager;

class DisplayMemoryTest : public test::WindowTest {};

/// How often `drawing` allocates once it has been done a few times.
template<typename Drawing>
long allocationsOf(Drawing drawing) {
    for (int warming = 0; warming < 3; ++warming)
        drawing();
    const long before = test::allocations();
    drawing();
    return test::allocations() - before;
}

// The library allocates at each of its draw calls that changes the texture: what counts is that
// nothing comes on top.

TEST_F(DisplayMemoryTest, a_full_screen_allocates_no_more_than_one_character) {
    startDisplay();
    DisplayManager &display = DisplayManager::getInstance();
    const std::string row = "abcdefghijklmnopqrstuvwxyz 0123456789 ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const auto fill_screen = [&] {
        for (int y = 0; y < 24; ++y)
            display.drawString({0, static_cast<float>(y)}, row);
    };
    EXPECT_EQ(allocationsOf(fill_screen), 0);
    display.swapBuffers();

    const long one_character = allocationsOf([&] {
        display.drawCh({0, 0}, 'a');
        display.swapBuffers();
    });
    EXPECT_EQ(allocationsOf([&] {
                  fill_screen();
                  display.swapBuffers();
              }),
              one_character);
}

TEST_F(DisplayMemoryTest, a_figure_allocates_no_more_than_the_librarys_polygon) {
    startDisplay();
    sf::RenderWindow &window = *DisplayManager::getInstance().getWindow();
    const sf::CircleShape polygon(20, 10);
    const long of_polygon = allocationsOf([&] {
        for (int i = 0; i < 30; ++i)
            window.draw(polygon);
    });
    sv::Shape shape;
    EXPECT_EQ(allocationsOf([&] {
                  for (int i = 0; i < 30; ++i) {
                      shape.setType(i % 3);
                      shape.setSize(static_cast<float>(i));
                      shape.draw({70, static_cast<float>(i)});
                  }
              }),
              of_polygon);
}

TEST_F(DisplayMemoryTest, each_thing_that_cannot_be_made_fails_the_start_with_its_line) {
    server.emplace();
    configure("");
    startLog();
    const std::string start = "DisplayManager::startUp(): Unable to ";
    const std::string lines[] = {start + "allocate window!",
                                 start + "load font from file '" + test::FONT + "'.",
                                 start + "allocate rectangle.", start + "allocate text."};
    DisplayManager &display = DisplayManager::getInstance();
    for (int made = 0; made < 4; ++made) {
        test::failNothrowAfter(made);
        EXPECT_EQ(display.startUp(), -1);
        test::failNothrowAfter(-1);
        EXPECT_EQ(logCount(lines[made]), 1) << lines[made];
        display.shutDown();
    }
    EXPECT_EQ(display.startUp(), 0);
}

} // namespace
