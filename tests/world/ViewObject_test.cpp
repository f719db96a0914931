#include "world/ViewObject.h"

#include "core/LogManager.h"
#include "display/DisplayManager.h"
#include "support/ScreenText.h"
#include "support/WindowTest.h"
#include "support/printing.h"
#include "world/EventView.h"
#include "world/WorldManager.h"

#include <limits>

namespace sv {
namespace {

class ViewObjectTest : public test::WindowTest {
  public:
    ViewObjectTest(const ViewObjectTest &) = delete;
    ViewObjectTest &operator=(const ViewObjectTest &) = delete;

  protected:
    ViewObjectTest() {
        startLog(1);
        world.startUp();
        world.setBoundary({{0, 0}, 200, 100});
        world.setView({{0, 0}, 78, 24});
    }

    ~ViewObjectTest() override { world.shutDown(); }
    WorldManager &world = WorldManager::getInstance();
};

TEST_F(ViewObjectTest, nine_places_with_and_without_a_border_as_they_show) {
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

TEST_F(ViewObjectTest, it_stays_in_its_place_while_the_world_scrolls_and_shows_its_colour) {
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

TEST_F(ViewObjectTest, events_change_the_value_of_those_that_carry_their_tag) {
    auto *p_points = new ViewObject;
    auto *p_lives = new ViewObject;
    p_points->setViewString("Points");
    p_lives->setViewString("Lives");
    p_lives->setValue(3);
    constexpr int most = std::numeric_limits<int>::max();
    const struct {
        EventView event;
        int points;
    } cases[] = {{{"Points", 10, true}, 10},     {{"Points", 10, true}, 20},
                 {{"Points", -5, true}, 15},     {{"Points", 7, false}, 7},
                 {{"points", 99, false}, 7},     {{"Points ", 99, false}, 7},
                 {{"Points", most, true}, most}, {{"Points", -1, true}, most - 1}};
    for (const auto &c : cases) {
        EXPECT_EQ(world.onEvent(&c.event), 2);
        EXPECT_EQ(p_points->getValue(), c.points);
        EXPECT_EQ(p_lives->getValue(), 3);
    }
    Event impostor;
    impostor.setType(VIEW_EVENT);
    EXPECT_EQ(p_points->eventHandler(&impostor), 0);
}

TEST_F(ViewObjectTest, a_place_that_is_none_is_refused_and_a_free_place_has_no_row) {
    auto *p_label = new ViewObject;
    const Vector top_center{39, 1};
    EXPECT_EQ(p_label->getPosition(), top_center);
    for (const int location : {9, -1}) {
        p_label->setLocation(location);
        EXPECT_EQ(p_label->getPosition(), top_center);
        EXPECT_EQ(logCount("ViewObject::setLocation(): Warning! Location out of range (" +
                           std::to_string(location) + "). Ignored."),
                  1);
    }
    p_label->setPosition(top_center);
    EXPECT_EQ(p_label->getLocation(), TOP_CENTER) << "where it is: it keeps its location";
    p_label->setPosition({5, 22});
    p_label->setBorder(false);
    EXPECT_EQ(p_label->getPosition(), (Vector{5, 22}));
    EXPECT_EQ(p_label->getLocation(), FREE_PLACEMENT);
}

} // namespace
} // namespace sv
