#include "selvane/world/Object.h"

#include "selvane/core/Event.h"
#include "selvane/core/LogManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/resources/ResourceManager.h"
#include "support/WorldTest.h"

#include <functional>
#include <limits>
#include <vector>

namespace sv {
namespace {

using Waypoints = std::vector<Vector>;
using ObjectTest = test::WorldTest;

static_assert(sizeof(Object) <= 512, "a hundred texts alone would take 3,200 bytes");

TEST_F(ObjectTest, ids_continue_from_the_highest_set) {
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

TEST_F(ObjectTest, values_out_of_range_are_refused) {
    Object *p_o = new Object;
    p_o->serialize("ALL");
    EXPECT_EQ(p_o->setAltitude(5), -1);
    EXPECT_EQ(p_o->setAltitude(-1), -1);
    EXPECT_EQ(p_o->setSolidness(static_cast<Solidness>(3)), -1);
    EXPECT_EQ(p_o->setSolidness(static_cast<Solidness>(-1)), -1);
    EXPECT_EQ(p_o->setSprite("nowhere"), -1);
    EXPECT_EQ(p_o->unregisterInterest("b"), -1);
    EXPECT_EQ(p_o->serialize(""), "");
    expectLogged({"Object::setAltitude(): Altitude 5 not in range [0,4].  Ignored.",
                  "Object::setAltitude(): Altitude -1 not in range [0,4].  Ignored.",
                  "Object::setSolidness(): Solidness 3 not one of HARD, SOFT or SPECTRAL.",
                  "Object::setSolidness(): Solidness -1 not one of HARD, SOFT or SPECTRAL.",
                  "Object::setSprite(): Warning! Sprite 'nowhere' not found",
                  "Object::unregisterInterest(): event 'b' not previously registered"});
}

TEST_F(ObjectTest, setters_raise_the_flag_of_a_change) {
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
        {Attribute::SHAPE, "shape:-1,", "shape:1,", true},
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

TEST_F(ObjectTest, interests_go_to_their_manager) {
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
    EXPECT_EQ(p_o->unregisterInterest("game event"), 0);
    EXPECT_EQ(p_o->getInterests().front(), "sv-step");
    EXPECT_EQ(p_o->getInterests().back(), "sv-custom-network");
    EXPECT_EQ(world.onEvent(&event), MAX_OBJ_EVENTS - 3);
    delete p_o;
    EXPECT_EQ(world.onEvent(&event), 0);
}

TEST_F(ObjectTest, misspelt_events_get_a_warning) {
    auto *p_o = new Object;
    for (const char *type :
         {"sv-undefined", "sv-step", "sv-keyboard", "sv-mouse", "sv-path", "sv-network",
          "sv-custom-network", "sv-keyboard-network", "sv-mouse-network", "sv-view", "SV-STEP"})
        EXPECT_EQ(p_o->registerInterest(type), 0);
    EXPECT_EQ(logText().find("Warning!"), std::string::npos) << logText();
    for (const std::string type : {"sv-keybord", "sv-step "}) {
        EXPECT_EQ(p_o->registerInterest(type), 0);
        expectLogged(
            {"Object::registerInterest(): Warning! Event '" + type + "' is none of the engine's."});
        Event event;
        event.setType(type);
        EXPECT_EQ(world.onEvent(&event), 1);
    }
}

TEST_F(ObjectTest, acceleration_comes_after_the_move) {
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

TEST_F(ObjectTest, paths_are_followed_without_overshooting) {
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

TEST_F(ObjectTest, false_path_events_are_refused) {
    Event impostor;
    impostor.setType(PATH_EVENT);
    EXPECT_EQ((new Object)->eventHandler(&impostor), 0);
    expectLogged({"Object::eventHandler(): Error! Dynamic cast to EventPath failed."});
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

TEST_F(ObjectTest, waypoints_are_ahead_until_reached) {
    // The next step would overshoot waypoints within three quarters of its length.
    auto *p_o = new Pilgrim({{1, 1}, {1, 1.7F}, {1, 2.5F}, {9, 1}});
    p_o->setSpeed(1);
    p_o->stepPath();
    EXPECT_EQ(p_o->seen, (std::vector<Waypoints>{{{1, 1}, {1, 1.7F}, {1, 2.5F}, {9, 1}},
                                                 {{1, 1.7F}, {1, 2.5F}, {9, 1}}}));
    EXPECT_EQ(p_o->getPath().waypoints, (Waypoints{{1, 2.5F}, {9, 1}}));
    p_o->setSpeed(1.2F);
    p_o->serialize("ALL");
    p_o->stepPath();
    EXPECT_TRUE(p_o->isModified(Attribute::PATH));
}

TEST_F(ObjectTest, paths_may_change_on_arrival) {
    const struct {
        const char *name;
        Waypoints next, ahead; // What each arrival sets, and what is left of it.
        std::size_t reached;
    } cases[] = {
        {"none", {}, {}, 1},
        {"another", {{5, 1}, {9, 1}}, {{5, 1}, {9, 1}}, 1},
        {"one that begins here", {{1, 1}, {5, 1}}, {{5, 1}}, 1},
        {"one that never leaves", {{1, 1}, {1, 1}, {1, 1}}, {{1, 1}, {1, 1}}, 2},
        {"one in reach", {{1, 1.5F}, {1, 1}, {1, 1}}, {{1, 1}, {1, 1}}, 2},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        auto *p_o = new Pilgrim({{1, 1}, {1, 1}});
        p_o->setSpeed(1);
        p_o->on_arrival = [&] { p_o->setPath({c.next, 0}); };
        p_o->stepPath();
        EXPECT_EQ(p_o->getPath().waypoints, c.ahead);
        EXPECT_EQ(p_o->getFollowPath(), !c.ahead.empty());
        EXPECT_EQ(p_o->seen.size(), c.reached);
    }
}

TEST_F(ObjectTest, direction_changes_where_the_path_turns) {
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
    p_o->setDirection({0, 0});
    EXPECT_TRUE(p_o->isModified(Attribute::DIRECTION)) << "the setter does not compare";
}

} // namespace
} // namespace sv
