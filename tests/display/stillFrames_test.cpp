// A frame that is the same as the last is not drawn: the screen shows the right one all the same.

#include "selvane/display/DisplayManager.h"
#include "selvane/display/figures.h"
#include "support/WindowTest.h"

#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Window/Event.hpp>
#include <functional>
#include <iterator>
#include <vector>

namespace {

using sv::DisplayManager;
using StillFrames = test::WindowTest;

using Frame = std::function<void()>;

Frame letter(float x, char ch, sv::Color color) {
    return [=] { DisplayManager::getInstance().drawCh({x, 4}, ch, color); };
}

Frame figure(sv::ShapeType type, float x, float size, unsigned char red, unsigned char alpha) {
    return [=] { sv::drawFigure({type, size, red, 0, 0, alpha}, {x, 60}); };
}

Frame both(const Frame &first, const Frame &second) {
    return [=] {
        first();
        second();
    };
}

/// Each differs from the one before in one thing.
const Frame frames[] = {
    both(figure(sv::TRIANGLE, 60, 40, 255, 255), figure(sv::SQUARE, 90, 40, 255, 255)),
    both(figure(sv::TRIANGLE, 60, 40, 255, 255), figure(sv::SQUARE, 90, 40, 255, 255)), // Turned.
    letter(4, 'A', sv::RED),
    letter(4, 'B', sv::RED),
    letter(4, 'B', sv::GREEN),
    letter(4.5F, 'B', sv::GREEN),
    [] {},
    figure(sv::CIRCLE, 60, 40, 255, 255),
    figure(sv::CIRCLE, 60, 41, 255, 255),
    figure(sv::CIRCLE, 60, 41, 200, 255),
    figure(sv::CIRCLE, 60, 41, 200, 99),
    figure(sv::CIRCLE, 61, 41, 200, 99),
    figure(sv::SQUARE, 61, 41, 200, 99),
    both(figure(sv::CIRCLE, 61, 41, 200, 255), letter(12, 'B', sv::GREEN)),
    both(letter(12, 'B', sv::GREEN), figure(sv::CIRCLE, 61, 41, 200, 255)),
};

TEST_F(StillFrames, frames_are_shown_unless_the_window_has_them) {
    startDisplay("window_horizontal_pixels:512,window_vertical_pixels:384");
    DisplayManager &display = DisplayManager::getInstance();
    const auto show = [&](const Frame &draw, bool is_forced, int times = 1) {
        for (int i = 0; i < times; ++i) {
            draw();
            if (is_forced)
                display.getFlushedWindow();
            display.swapBuffers();
            for (sf::Event event; display.getEventWindow()->pollEvent(event);) {
            }
        }
        return server->pixels();
    };
    std::vector<std::vector<unsigned char>> shown;
    for (const Frame &draw : frames)
        shown.push_back(show(draw, false));
    sv::forgetFigures(); // They stay turned.
    for (std::size_t i = 0; i < std::size(frames); ++i) {
        SCOPED_TRACE(i);
        EXPECT_TRUE(shown[i] == show(frames[i], true));
        EXPECT_TRUE(i == 0 || shown[i] != shown[i - 1]);
    }
    const Frame &last = std::end(frames)[-1];
    show(last, false);
    server->coverWindow();
    EXPECT_TRUE(server->pixels() != shown.back());
    EXPECT_TRUE(show(last, false) == shown.back());
    server->resizeWindow(250, 200);
    const auto resized = show(last, false, 2);
    EXPECT_TRUE(resized == show(last, true));
    EXPECT_TRUE(resized != show([] {}, false));
}

} // namespace
