#include "selvane/world/Object.h"

#include "selvane/core/Event.h"
#include "selvane/core/EventPath.h"
#include "selvane/core/LogManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/path/PathFind.h"
#include "selvane/resources/ResourceManager.h"
#include "support/WorldTest.h"

#include <functional>
#include <limits>
#include <vector>

namespace sv {
namespace {

using test::Diary;
using test::Witness;
using Waypoints = std::vector<Vector>;
using ObjectTest = test::WorldTest;

static_assert(sizeof(Object) <= 512, "a hundred texts alone would take 3,200 bytes");

TEST_F(ObjectTest, ids_go_on_from_the_highest_that_was_set) {
    constexpr int highest = std::numeric_limits<int>::max();
    Object *p_o = new Object;
    EXPECT_EQ(p_o->getId(), 1);
    const struct {
        int set, next;
    } cases[] = {{2, 3}, {50, 51}, {7, 52}, {highest, highest}, {-highest, highest}};
    for (const auto &c : cases) {
        p_o->setId(c.set);
        EXPECT_EQ((new Object)->getId(), c.next);
    }
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
    expectLogged({"Object::setAltitude(): Altitude 5 not in range [0,4].  Ignored.",
                  "Object::setAltitude(): Altitude -1 not in range [0,4].  Ignored.",
                  "Object::setSolidness(): Solidness 3 not one of HARD, SOFT or SPECTRAL.",
                  "Object::setSolidness(): Solidness -1 not one of HARD, SOFT or SPECTRAL.",
                  "Object::setSprite(): Warning! Sprite 'nowhere' not found"});
}

TEST_F(ObjectTest, setting_what_it_has_changes_nothing_and_setting_anew_raises_one_flag) {
    Object *p_o = new Object;
    p_o->setBox({{0, 0}, 1, 1}); // In whole cells, as a text has it.
    const struct {
        Attribute attribute;
        const char *same, *other;
        bool raised_by_the_same = false;
    } cases[] = {
        {Attribute::ID, "id:1,", "id:2,"},
        {Attribute::ALTITUDE, "altitude:2,", "altitude:4,"},
        {Attribute::SOLIDNESS, "solidness:0,", "solidness:2,"},
        {Attribute::BOX, "box-corner-x:0,box-corner-y:0,box-horizontal:1,box-vertical:1,",
         "box-corner-x:0,box-corner-y:0,box-horizontal:2,box-vertical:1,"},
        {Attribute::POSITION, "pos-x:1,pos-y:1,", "pos-x:2,pos-y:1,"},
        {Attribute::VISIBLE, "is_visible:true,", "is_visible:false,"},
        {Attribute::ACTIVE, "is_active:true,", "is_active:false,"},
        {Attribute::TYPE, "type:(Undefined),", "type:T,", true},
        {Attribute::SPEED, "speed:0,", "speed:1,", true},
        {Attribute::FOLLOW_PATH, "follow_path:false,", "follow_path:true,", true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.same);
        p_o->serialize("ALL");
        p_o->deserialize(c.same);
        EXPECT_EQ(p_o->isModified(), c.raised_by_the_same);
        p_o->serialize("ALL");
        p_o->deserialize(c.other);
        EXPECT_TRUE(p_o->isModified(c.attribute));
        p_o->serialize("ALL");
        EXPECT_FALSE(p_o->isModified());
    }
}

/// Stops the resource manager before it draws. Without a display a sprite's draw answers -1.
class Stopper : public Object {
  public:
    explicit Stopper(std::vector<int> &new_answers) : answers(new_answers) { setSprite("spr"); }

    int draw() override {
        if (answers.size() == 1)
            ResourceManager::getInstance().shutDown();
        answers.push_back(Object::draw());
        return answers.back();
    }

  private:
    std::vector<int> &answers;
};

TEST_F(ObjectTest, stopping_the_resources_leaves_objects_without_sprites) {
    writeFile("spr.txt", "1\n3\n1\n0\nred\nabc\n");
    ResourceManager::getInstance().startUp();
    ResourceManager::getInstance().loadSprite("spr.txt", "spr");
    std::vector<int> answers;
    for (int i = 0; i < 3; ++i)
        new Stopper(answers);
    world.draw();
    EXPECT_EQ(answers, (std::vector<int>{-1, 0, 0}));
    for (const Object *p_o : world.getAllObjects()) {
        EXPECT_EQ(p_o->getAnimation().getSprite(), nullptr);
        EXPECT_EQ(p_o->getAnimation().getName(), "spr");
        EXPECT_EQ(p_o->getBox(), (Box{{-1.5F, -0.5F}, 3, 1}));
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
    expectLogged({"Object::registerInterest(): maximum (100) reached, cannot register for "
                  "event 'one more'"});
    Event event;
    event.setType("game event");
    EXPECT_EQ(world.onEvent(&event), MAX_OBJ_EVENTS - 2);
    delete p_o;
    EXPECT_EQ(world.onEvent(&event), 0);
}

TEST_F(ObjectTest, an_interest_in_a_misspelt_event_is_warned_of) {
    auto *p_o = new Object;
    for (const char *type :
         {"sv-undefined", "sv-step", "sv-keyboard", "sv-mouse", "sv-path", "sv-network",
          "sv-custom-network", "sv-keyboard-network", "sv-mouse-network", "sv-view", "SV-STEP"})
        EXPECT_EQ(p_o->registerInterest(type), 0);
    EXPECT_EQ(logText().find("Warning!"), std::string::npos) << logText();
    LogManager::getInstance().setLogLevel(0);
    for (const char *type : {"sv-keybord", "sv-step "}) {
        said();
        EXPECT_EQ(p_o->registerInterest(type), 0);
        EXPECT_EQ(said(), std::string("Object::registerInterest(): Warning! Event '") + type +
                              "' is none of the engine's.\n");
        Event event;
        event.setType(type);
        EXPECT_EQ(world.onEvent(&event), 1);
    }
}

TEST_F(ObjectTest, taking_back_the_middle_interest_keeps_the_order_of_the_others) {
    Object *p_o = new Object;
    p_o->deserialize("event_count:3,event_name[0]:a,event_name[1]:b,event_name[2]:c,");
    EXPECT_EQ(p_o->unregisterInterest("b"), 0);
    EXPECT_EQ(p_o->unregisterInterest("b"), -1);
    EXPECT_EQ(p_o->getInterests(), (std::vector<std::string>{"a", "c"}));
    expectLogged({"Object::unregisterInterest(): event 'b' not previously registered"});
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
    const EventPath none(PATH_NONE, {{9, 9}});
    EXPECT_EQ(p_o->eventHandler(&none), 1);
    EXPECT_FALSE(p_o->getFollowPath());
    const EventPath found(PATH_FOUND, {{1, 4}, {1, 5}});
    EXPECT_EQ(p_o->eventHandler(&found), 1);
    EXPECT_TRUE(p_o->getFollowPath());
    EXPECT_EQ(p_o->getDirection(), (Vector{0, 1}));

    Event impostor;
    impostor.setType(PATH_EVENT);
    EXPECT_EQ(p_o->eventHandler(&impostor), 0);
    EXPECT_EQ(logCount("Object::eventHandler(): Error! Dynamic cast to EventPath failed."), 1);
}

/// Does something where its path takes it.
class Pilgrim : public Object {
  public:
    explicit Pilgrim(const Waypoints &waypoints) {
        setPath({waypoints, 0});
        setFollowPath(true);
    }

    int setPosition(Vector new_position) override {
        seen.push_back(getPath().waypoints);
        if (on_arrival)
            on_arrival();
        return Object::setPosition(new_position);
    }

    std::function<void()> on_arrival;
    std::vector<Waypoints> seen; // What was ahead at each waypoint.
};

TEST_F(ObjectTest, a_waypoint_is_ahead_until_it_is_reached) {
    auto *p_o = new Pilgrim({{1, 1}, {1, 1.5F}, {9, 1}});
    p_o->setSpeed(1);
    p_o->stepPath();
    EXPECT_EQ(p_o->seen,
              (std::vector<Waypoints>{{{1, 1}, {1, 1.5F}, {9, 1}}, {{1, 1.5F}, {9, 1}}}));
    EXPECT_EQ(p_o->getPath().waypoints, (Waypoints{{9, 1}}));
}

TEST_F(ObjectTest, a_path_that_changes_while_it_is_walked_loses_no_waypoint) {
    const Waypoints other{{5, 1}, {9, 1}};
    const struct {
        const char *name;
        std::function<Waypoints(const Waypoints &)> change;
        Waypoints ahead;
        std::size_t reached;
    } cases[] = {
        {"taken away", [](const Waypoints &) { return Waypoints{}; }, {}, 1},
        {"replaced", [&](const Waypoints &) { return other; }, other, 1},
        {"replaced by one that begins here",
         [](const Waypoints &) {
             return Waypoints{{1, 1}, {5, 1}};
         },
         {{5, 1}},
         1},
        {"walked in circles",
         [](Waypoints ahead) {
             ahead.push_back(ahead.front());
             return ahead;
         },
         {{1, 1}, {1, 1}},
         2},
        {"replaced by one in reach, each time",
         [](const Waypoints &) {
             return Waypoints{{1, 1.5F}, {1, 1}, {1, 1}};
         },
         {{1, 1}, {1, 1}},
         2},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        auto *p_o = new Pilgrim({{1, 1}, {1, 1}});
        p_o->setSpeed(1);
        p_o->on_arrival = [&] { p_o->setPath({c.change(p_o->getPath().waypoints), 0}); };
        p_o->stepPath();
        EXPECT_EQ(p_o->getPath().waypoints, c.ahead);
        EXPECT_EQ(p_o->getFollowPath(), !c.ahead.empty());
        EXPECT_EQ(p_o->seen.size(), c.reached);
    }
}

TEST_F(ObjectTest, a_path_of_a_million_waypoints_is_passed_at_once) {
    auto *p_o = new Object;
    p_o->setPath({Waypoints(1'000'000, {1, 1}), 0});
    p_o->setFollowPath(true);
    p_o->stepPath(); // Dropping them one by one runs into the time limit of every test.
    EXPECT_FALSE(p_o->getFollowPath());
}

TEST_F(ObjectTest, following_a_path_changes_the_direction_where_it_turns) {
    auto *p_o = new Object;
    p_o->setSpeed(1);
    p_o->setPath({{{4, 1}, {4, 3}}, 0});
    p_o->setFollowPath(true);
    std::string turns;
    while (p_o->getFollowPath()) {
        p_o->serialize("ALL");
        world.update();
        turns += p_o->isModified(Attribute::DIRECTION) ? 't' : '-';
    }
    EXPECT_EQ(turns, "--t-t");
    p_o->setPath({{{4, 3}}, 0});
    p_o->setFollowPath(true);
    p_o->serialize("ALL");
    world.update();
    EXPECT_EQ(p_o->serialize(""), "follow_path:false,path:,path_index:0,");
    p_o->setDirection({0, 0});
    EXPECT_TRUE(p_o->isModified(Attribute::DIRECTION)) << "the setter does not compare";
}

} // namespace
} // namespace sv
