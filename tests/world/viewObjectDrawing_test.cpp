#include "world/ViewObject.h"

#include "display/DisplayManager.h"
#include "support/ScreenText.h"
#include "support/WindowTest.h"
#include "world/WorldManager.h"

namespace sv {
namespace {

class ViewObjectDrawing : public test::WindowTest {
  public:
    ViewObjectDrawing(const ViewObjectDrawing &) = delete;
    ViewObjectDrawing &operator=(const ViewObjectDrawing &) = delete;

  protected:
    ViewObjectDrawing() {
        startLog(1);
        world.startUp();
        world.setBoundary({{0, 0}, 200, 100});
        world.setView({{0, 0}, 78, 24});
    }

    ~ViewObjectDrawing() override { world.shutDown(); }
    WorldManager &world = WorldManager::getInstance();
};

TEST_F(ViewObjectDrawing, nine_places_with_and_without_a_border_as_they_show) {
    startDisplay(test::READABLE_WINDOW);
    const test::ScreenText screen;
    std::vector<ViewObject *> labels;
    for (int location = TOP_LEFT; location <= BOTTOM_RIGHT; ++location) {
        labels.push_back(new ViewObject);
        labels.back()->setViewString("P" + std::to_string(location));
        labels.back()->setValue(location * 11);
        labels.back()->setLocation(location);
    }
    world.draw();
    std::vector<std::string> expected(24);
    const auto put = [&expected](std::size_t row, const std::string &text) {
        expected[row] = text;
    };
    put(0, "          ------                    -------                   -------");
    put(1, "         | P0 0 |                  | P1 11 |                 | P2 22 |");
    put(2, expected[0]);
    put(11, "          -------                   -------                   -------");
    put(12, "         | P3 33 |                 | P4 44 |                 | P5 55 |");
    put(13, expected[11]);
    put(21, expected[11]);
    put(22, "         | P6 66 |                 | P7 77 |                 | P8 88 |");
    put(23, expected[11]);
    EXPECT_EQ(screen.rows(), expected);

    for (ViewObject *p_label : labels)
        p_label->setBorder(false);
    DisplayManager::getInstance().swapBuffers();
    world.draw();
    expected.assign(24, "");
    put(0, "           P0 0                      P1 11                     P2 22");
    put(11, "           P3 33                     P4 44                     P5 55");
    put(23, "           P6 66                     P7 77                     P8 88");
    EXPECT_EQ(screen.rows(), expected);
}

TEST_F(ViewObjectDrawing, it_stays_in_its_place_while_the_world_scrolls_and_shows_its_colour) {
    startDisplay(test::READABLE_WINDOW);
    const test::ScreenText screen;
    auto *p_label = new ViewObject;
    p_label->setViewString("GO!");
    p_label->setDrawValue(false);
    p_label->setColor(CYAN);
    p_label->setPosition({3, 4});
    world.setView({{50, 60}, 78, 24});
    world.draw();
    EXPECT_EQ(screen.rows()[4], "| GO! |");
    EXPECT_EQ(screen.colorAt(2, 4), sf::Color(0, 255, 255));
}

} // namespace
} // namespace sv
