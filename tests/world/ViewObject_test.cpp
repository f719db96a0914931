#include "selvane/world/ViewObject.h"

#include "selvane/core/EventView.h"
#include "selvane/core/LogManager.h"
#include "selvane/world/WorldManager.h"
#include "support/EngineTest.h"
#include "support/printing.h"

#include <limits>

namespace sv {
namespace {

class ViewObjectTest : public test::EngineTest {
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
    } cases[] = {{{"Points", 20, true}, 20},  {{"Points", -5, true}, 15},
                 {{"Points", 7, false}, 7},   {{"points", 99, false}, 7},
                 {{"Points ", 99, false}, 7}, {{"Points", most, true}, most}};
    for (const auto &c : cases) {
        EXPECT_EQ(world.onEvent(&c.event), 2);
        EXPECT_EQ(p_points->getValue(), c.points);
        EXPECT_EQ(p_lives->getValue(), 3);
    }
    Event impostor;
    impostor.setType(VIEW_EVENT);
    EXPECT_EQ(p_points->eventHandler(&impostor), 0);
}

TEST_F(ViewObjectTest, attributes_have_numbers_of_their_own_in_each_class) {
    auto *p_label = new ViewObject;
    const Object &object = *p_label;
    p_label->serialize("ALL");
    p_label->setColor(RED);
    p_label->setAcceleration({1, 1});
    for (int index = -1; index <= ATTRIBUTE_COUNT; ++index) {
        EXPECT_EQ(p_label->isModified(index), index == 3) << index;
        EXPECT_EQ(object.isModified(index), index == 13) << index;
    }
}

TEST_F(ViewObjectTest, a_place_that_is_none_is_refused_and_a_free_place_has_no_row) {
    auto *p_label = new ViewObject;
    const Vector top_center{39, 1};
    EXPECT_EQ(p_label->getPosition(), top_center);
    for (const int location : {9, -1}) {
        p_label->setLocation(location);
        EXPECT_EQ(p_label->getPosition(), top_center);
        expectLogged({"ViewObject::setLocation(): Warning! Location out of range (" +
                      std::to_string(location) + "). Ignored."});
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
