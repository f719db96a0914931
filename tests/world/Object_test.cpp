#include "world/Object.h"

#include "core/Event.h"
#include "loop/GameManager.h"
#include "path/PathFind.h"
#include "support/WorldTest.h"
#include "world/EventPath.h"

#include <limits>

namespace sv {
namespace {

using test::Diary;
using test::Witness;
using ObjectTest = test::WorldTest;

TEST_F(ObjectTest, ids_go_on_from_the_highest_that_was_set) {
    Object *p_o = new Object;
    EXPECT_EQ(p_o->getId(), 1);
    p_o->setId(2);
    EXPECT_EQ((new Object)->getId(), 3);
    p_o->setId(50);
    EXPECT_EQ((new Object)->getId(), 51);
    p_o->setId(7);
    EXPECT_EQ((new Object)->getId(), 52);
    p_o->setId(std::numeric_limits<int>::max());
    EXPECT_EQ((new Object)->getId(), std::numeric_limits<int>::max());
    p_o->setId(std::numeric_limits<int>::min());
    EXPECT_EQ((new Object)->getId(), std::numeric_limits<int>::max());
}

TEST_F(ObjectTest, values_out_of_range_are_refused_and_change_nothing) {
    Object *p_o = new Object;
    p_o->serialize("ALL");
    for (const int altitude : {5, -1})
        EXPECT_EQ(p_o->setAltitude(altitude), -1);
    for (const int solidness : {3, -1})
        EXPECT_EQ(p_o->setSolidness(static_cast<Solidness>(solidness)), -1);
    EXPECT_EQ(p_o->setSprite("nowhere"), -1);
    EXPECT_EQ(p_o->serialize(""), "");
    for (const char *line :
         {"Object::setAltitude(): Altitude 5 not in range [0,4].  Ignored.",
          "Object::setAltitude(): Altitude -1 not in range [0,4].  Ignored.",
          "Object::setSolidness(): Solidness 3 not one of HARD, SOFT or SPECTRAL.",
          "Object::setSolidness(): Solidness -1 not one of HARD, SOFT or SPECTRAL.",
          "Object::setSprite(): Warning! Sprite 'nowhere' not found"})
        EXPECT_EQ(logCount(line), 1) << line;
}

TEST_F(ObjectTest, setting_what_it_has_changes_nothing_and_setting_anew_raises_one_flag) {
    Object *p_o = new Object;
    const struct {
        Attribute attribute;
        bool raised_by_the_same;
        std::function<void()> same;
        std::function<void()> other;
    } cases[] = {
        {Attribute::ID, false, [&] { p_o->setId(1); }, [&] { p_o->setId(2); }},
        {Attribute::ALTITUDE, false, [&] { p_o->setAltitude(2); }, [&] { p_o->setAltitude(4); }},
        {Attribute::SOLIDNESS, false, [&] { p_o->setSolidness(HARD); },
         [&] { p_o->setSolidness(SPECTRAL); }},
        {Attribute::BOX, false, [&] { p_o->setBox(p_o->getBox()); },
         [&] {
             p_o->setBox({{0, 0}, 1, 1});
         }},
        {Attribute::POSITION, false,
         [&] {
             p_o->setPosition({1, 1});
         },
         [&] {
             p_o->setPosition({2, 1});
         }},
        {Attribute::TYPE, true, [&] { p_o->setType("(Undefined)"); }, [&] { p_o->setType("T"); }},
        {Attribute::SPEED, true, [&] { p_o->setSpeed(0); }, [&] { p_o->setSpeed(1); }},
        {Attribute::FOLLOW_PATH, true, [&] { p_o->setFollowPath(false); },
         [&] { p_o->setFollowPath(true); }},
        {Attribute::VISIBLE, false, [&] { p_o->setVisible(true); },
         [&] { p_o->setVisible(false); }},
        {Attribute::ACTIVE, false, [&] { p_o->setActive(true); }, [&] { p_o->setActive(false); }},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(static_cast<int>(c.attribute));
        p_o->serialize("ALL");
        c.same();
        EXPECT_EQ(p_o->isModified(), c.raised_by_the_same);
        p_o->serialize("ALL");
        c.other();
        EXPECT_TRUE(p_o->isModified(c.attribute));
        p_o->serialize("ALL");
        EXPECT_FALSE(p_o->isModified());
    }
}

TEST_F(ObjectTest, interests_go_to_the_manager_that_delivers_them_until_there_are_too_many) {
    Object *p_o = new Object;
    for (int i = 0; i < MAX_OBJ_EVENTS - 1; ++i)
        ASSERT_EQ(p_o->registerInterest(i == 0 ? "sv-step" : "game event"), 0);
    EXPECT_EQ(p_o->registerInterest("sv-out"), -1);
    EXPECT_EQ(p_o->registerInterest("sv-custom-network"), 0);
    EXPECT_EQ(p_o->registerInterest("one more"), -1);
    EXPECT_EQ(p_o->getInterests().size(), 100U);
    EXPECT_EQ(logCount("Object::registerInterest(): maximum (100) reached, cannot register for "
                       "event 'one more'"),
              1);
    Event event;
    event.setType("game event");
    EXPECT_EQ(world.onEvent(&event), MAX_OBJ_EVENTS - 2);
    delete p_o;
    EXPECT_EQ(world.onEvent(&event), 0);
}

TEST_F(ObjectTest, taking_back_the_middle_interest_keeps_the_order_of_the_others) {
    Object *p_o = new Object;
    for (const char *type : {"a", "b", "c"})
        p_o->registerInterest(type);
    EXPECT_EQ(p_o->unregisterInterest("b"), 0);
    EXPECT_EQ(p_o->unregisterInterest("b"), -1);
    EXPECT_EQ(p_o->getInterests(), (std::vector<std::string>{"a", "c"}));
    EXPECT_EQ(logCount("Object::unregisterInterest(): event 'b' not previously registered"), 1);
}

TEST_F(ObjectTest, acceleration_changes_the_velocity_after_the_move) {
    Object *p_o = new Object;
    p_o->setAcceleration({0, 0.5F});
    p_o->setVelocity({1, 0});
    world.update();
    EXPECT_EQ(p_o->getPosition(), (Vector{2, 1}));
    EXPECT_EQ(p_o->getVelocity().y, 0.5F);
    p_o->setAcceleration({0, 0});
    p_o->setVelocity({0, 0});
    p_o->serialize("ALL");
    world.update();
    EXPECT_FALSE(p_o->isModified()) << "without acceleration nothing changes";
}

TEST_F(ObjectTest, a_path_is_walked_to_its_end_without_overshooting) {
    for (const float speed : {0.3F, 1.0F, 2.5F}) {
        SCOPED_TRACE(speed);
        Object *p_o = new Object;
        p_o->setPosition({5, 5});
        p_o->setSpeed(speed);
        p_o->setPath({{{5, 5}, {10, 5}, {10, 9}}, 0});
        p_o->setFollowPath(true);
        float furthest = 0;
        int steps = 0;
        for (; p_o->getFollowPath() && steps < 100; ++steps) {
            world.update();
            furthest = std::max(furthest, p_o->getPosition().x);
        }
        EXPECT_EQ(p_o->getPosition(), (Vector{10, 9}));
        EXPECT_EQ(p_o->getDirection(), (Vector{0, 0}));
        EXPECT_LE(furthest, 10 + speed * 0.25F);
        EXPECT_LE(steps, static_cast<int>(9 / speed) + 3);
        delete p_o;
    }
}

TEST_F(ObjectTest, a_found_path_is_followed_and_any_end_drops_the_search) {
    auto *p_o = new Object;
    const EventPath none(PATH_NONE, {{{9, 9}}, 0});
    EXPECT_EQ(p_o->eventHandler(&none), 1);
    EXPECT_FALSE(p_o->getFollowPath());
    const EventPath found(PATH_FOUND, {{{1, 4}, {1, 5}}, 1});
    EXPECT_EQ(p_o->eventHandler(&found), 1);
    EXPECT_TRUE(p_o->getFollowPath());
    EXPECT_EQ(p_o->getDirection(), (Vector{0, 1}));
    EXPECT_EQ(p_o->getPath().path_index, 1);

    Event impostor;
    impostor.setType(PATH_EVENT);
    EXPECT_EQ(p_o->eventHandler(&impostor), 0);
    EXPECT_EQ(logCount("Object::eventHandler(): Error! Dynamic cast to EventPath failed."), 1);
}

TEST_F(ObjectTest, a_handler_that_takes_the_path_away_while_it_is_walked_does_no_harm) {
    class Fickle : public Object {
      public:
        int setPosition(Vector new_position) override {
            setPath({});
            return Object::setPosition(new_position);
        }
    };
    auto *p_o = new Fickle;
    p_o->setPath({{{1, 1}, {1, 1}}, 0});
    p_o->setFollowPath(true);
    p_o->stepPath();
    EXPECT_FALSE(p_o->getFollowPath());
}

TEST_F(ObjectTest, a_path_of_a_million_waypoints_is_passed_at_once) {
    auto *p_o = new Object;
    p_o->setPath({std::vector<Vector>(1'000'000, {1, 1}), 0});
    p_o->setFollowPath(true);
    p_o->stepPath(); // Dropping them one by one runs into the time limit of every test.
    EXPECT_FALSE(p_o->getFollowPath());
}

TEST_F(ObjectTest, an_object_with_few_interests_is_small) {
    // A hundred texts alone would take 3,200 bytes.
    EXPECT_LE(sizeof(Object), 512U);
}

} // namespace
} // namespace sv
