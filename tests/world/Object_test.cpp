#include "selvane/world/Object.h"

#include "selvane/core/Event.h"
#include "selvane/resources/ResourceManager.h"
#include "support/WorldTest.h"

#include <functional>
#include <limits>
#include <utility>
#include <vector>

namespace sv {
namespace {

using Waypoints = std::vector<Vector>;
using ObjectTest = test::WorldTest;

static_assert(sizeof(Object) <= 512, "a hundred texts alone would take 3,200 bytes");

TEST_F(ObjectTest, ids_continue_from_the_highest_set) {
    constexpr int highest = std::numeric_limits<int>::max();
    Object *p_o = new Object;
    const std::pair<int, int> set_and_next[] = {
        {1, 2}, {3, 4}, {50, 51}, {7, 52}, {highest, highest}, {-highest, highest}};
    for (const auto &[set, next] : set_and_next) {
        p_o->setId(set);
        EXPECT_EQ((new Object)->getId(), next);
    }
}

TEST_F(ObjectTest, values_out_of_range_are_refused) {
    Object *p_o = new Object;
    for (const int beyond : {-1, 5})
        EXPECT_EQ(p_o->setAltitude(beyond), -1);
    for (const int beyond : {-1, 3})
        EXPECT_EQ(p_o->setSolidness(static_cast<Solidness>(beyond)), -1);
    EXPECT_EQ(p_o->setSprite("nowhere"), -1);
    EXPECT_EQ(p_o->unregisterInterest("b"), -1);
    for (const char *type : {COLLISION_EVENT, OUT_EVENT})
        EXPECT_EQ(p_o->registerInterest(type), -1);
    expectLogged({"Object::setAltitude(): Altitude 5 not in range [0,4].  Ignored.",
                  "Object::setAltitude(): Altitude -1 not in range [0,4].  Ignored.",
                  "Object::setSolidness(): Solidness 3 not one of HARD, SOFT or SPECTRAL.",
                  "Object::setSolidness(): Solidness -1 not one of HARD, SOFT or SPECTRAL.",
                  "Object::setSprite(): Warning! Sprite 'nowhere' not found",
                  "Object::unregisterInterest(): event 'b' not previously registered",
                  "WorldManager::isValid(): Event sv-collision handled automatically.",
                  "WorldManager::isValid(): Event sv-out handled automatically."});
}

TEST_F(ObjectTest, stopping_the_resources_leaves_objects_without_sprites) {
    writeFile("spr.txt", "1\n3\n1\n0\nred\nabc\n");
    ResourceManager::getInstance().startUp();
    ResourceManager::getInstance().loadSprite("spr.txt", "spr");
    Object *p_o = new Object;
    p_o->setSprite("spr");
    EXPECT_EQ(p_o->draw(), -1) << "there is no display";
    const std::string text = p_o->getAnimation().serialize("ALL");
    Animation copy = p_o->getAnimation();
    ResourceManager::getInstance().shutDown();
    EXPECT_EQ(p_o->draw(), 0);
    EXPECT_EQ(p_o->getAnimation().getSprite(), nullptr);
    EXPECT_EQ(copy.getSprite(), nullptr);
    EXPECT_EQ(copy.serialize("ALL"), text);
    EXPECT_EQ(copy.getBox(), Box::cell());
    EXPECT_EQ(p_o->getBox(), (Box{{-1.5F, -0.5F}, 3, 1}));
}

TEST_F(ObjectTest, interests_go_to_their_manager) {
    Object *p_o = new Object;
    for (int i = 0; i < MAX_OBJ_EVENTS - 1; ++i)
        ASSERT_EQ(p_o->registerInterest(i == 0 ? "sv-step" : "game event"), 0);
    EXPECT_EQ(p_o->registerInterest("sv-custom-network"), 0);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(p_o->registerInterest("one more"), -1);
    expectLogged({"Object::registerInterest(): Warning! Object 1 has registered for 'game event' "
                  "before, and is told of it once more each time.",
                  "Object::registerInterest(): maximum (100) reached, cannot register for "
                  "event 'one more'"});
    EXPECT_EQ(send("game event"), MAX_OBJ_EVENTS - 2);
    EXPECT_EQ(p_o->unregisterInterest("game event"), 0);
    EXPECT_EQ(p_o->getInterests().front(), "sv-step");
    EXPECT_EQ(p_o->getInterests().back(), "sv-custom-network");
    EXPECT_EQ(send("game event"), MAX_OBJ_EVENTS - 3);
    delete p_o;
    EXPECT_EQ(send("game event"), 0);
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
        EXPECT_EQ(send(type), 1);
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
    const struct {
        float speed;
        const char *turns; // t: a step in which the direction changes.
    } cases[] = {{0.3F, "t---------------t------------t"}, {1, "t----t---t"}, {2.5F, "t-tt"}};
    Object *p_o = new Object;
    for (const auto &c : cases) {
        SCOPED_TRACE(c.speed);
        p_o->setPosition({5, 5});
        p_o->setSpeed(c.speed);
        p_o->setPath({{{5, 5}, {10, 5}, {10, 9}}, 0});
        p_o->setFollowPath(true);
        float furthest = 0;
        std::string turns;
        while (p_o->getFollowPath() && turns.size() < 100) {
            p_o->serialize("ALL");
            world.update();
            turns += p_o->isModified(Attribute::DIRECTION) ? 't' : '-';
            furthest = std::max(furthest, p_o->getPosition().x);
        }
        EXPECT_EQ(turns, c.turns);
        EXPECT_EQ(furthest, 10);
        EXPECT_EQ(p_o->getPosition(), (Vector{10, 9}));
        EXPECT_EQ(p_o->getDirection(), (Vector{0, 0}));
    }
}

TEST_F(ObjectTest, false_path_events_are_refused) {
    EXPECT_EQ((new Object)->registerInterest(PATH_EVENT), 0);
    send(PATH_EVENT);
    expectLogged({"Object::eventHandler(): Error! Dynamic cast to EventPath failed."});
}

/// Follows a path, and does something at each waypoint.
class Pilgrim : public Object {
  public:
    explicit Pilgrim(const Waypoints &waypoints) {
        setPath({waypoints, 0});
        setFollowPath(true);
        setSpeed(1);
    }

    int setPosition(Vector new_position) override {
        on_arrival(); // First: reading the path forgets the waypoints behind.
        seen.push_back(getPath().waypoints);
        return Object::setPosition(new_position);
    }

    std::function<void()> on_arrival = [] {};
    std::vector<Waypoints> seen; // What was ahead at each waypoint.
};

TEST_F(ObjectTest, waypoints_are_ahead_until_reached) {
    // The next step would overshoot waypoints within three quarters of its length.
    auto *p_o = new Pilgrim({{1, 1}, {1, 1.7F}, {1, 2.5F}});
    p_o->serialize("ALL");
    p_o->stepPath();
    EXPECT_TRUE(p_o->isModified(Attribute::PATH));
    const std::vector<Waypoints> ahead{{{1, 1}, {1, 1.7F}, {1, 2.5F}}, {{1, 1.7F}, {1, 2.5F}}};
    EXPECT_EQ(p_o->seen, ahead);
    EXPECT_EQ(p_o->getPath().waypoints, (Waypoints{{1, 2.5F}}));
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
        p_o->on_arrival = [&] { p_o->setPath({c.next, 0}); };
        p_o->stepPath();
        EXPECT_EQ(p_o->getPath().waypoints, c.ahead);
        EXPECT_EQ(p_o->getFollowPath(), !c.ahead.empty());
        EXPECT_EQ(p_o->seen.size(), c.reached);
    }
}

} // namespace
} // namespace sv
