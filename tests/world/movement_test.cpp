// How objects move: the geometry, collisions, sliding, leaving the world, and the view.

#include "selvane/world/geometry.h"
#include "support/WorldTest.h"

#include <cmath>
#include <limits>
#include <memory>

namespace sv {
namespace {

using test::Diary;
using test::Witness;

struct MovementTest : test::WorldTest {
    /// An object that the diary calls `name`.
    Witness *make(const std::string &name, Vector position, Solidness solidness = HARD) {
        auto *p_o = new Witness(name, diary);
        p_o->setSolidness(solidness);
        p_o->setPosition(position);
        return p_o;
    }
};

TEST_F(MovementTest, vectors_of_any_length_have_a_direction) {
    constexpr float most = std::numeric_limits<float>::max();
    constexpr float least = std::numeric_limits<float>::denorm_min();
    const float diagonal = std::sqrt(0.5F);
    const struct {
        Vector v;
        float length;
        Vector direction;
    } cases[] = {
        {{0, 0}, 0, {0, 0}},
        {{0.1F, 0.2F}, 0.22360681F, {0.1F / 0.22360681F, 0.2F / 0.22360681F}}, // To the last bit.
        {{-0x3p100F, 0x4p100F}, 0x5p100F, {-0.6F, 0.8F}},
        {{0x3p-100F, 0x4p-100F}, 0x5p-100F, {0.6F, 0.8F}},
        {{most, most}, std::numeric_limits<float>::infinity(), {diagonal, diagonal}},
        {{least, -least}, least, {diagonal, -diagonal}},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(length(c.v), c.length);
        EXPECT_EQ(normalized(c.v), c.direction) << "of length " << c.length;
    }
}

TEST_F(MovementTest, boxes_that_touch_intersect) {
    const Box box{{10, 10}, 4, 2};
    const std::pair<Box, bool> cases[] = {
        {{{11, 0}, 1, 100}, true},      // Crossing it like a plus.
        {{{14, 10}, 2, 2}, true},       // At its right edge.
        {{{14, 12}, 0, 0}, true},       // A point at its corner.
        {{{14.001F, 10}, 2, 2}, false}, // Just right of it.
        {{{10, 7.999F}, 4, 2}, false},  // Just above.
        {{{std::numeric_limits<float>::quiet_NaN(), 10}, 4, 2}, false},
    };
    for (const auto &[other, intersect] : cases) {
        EXPECT_EQ(boxIntersectsBox(box, other), intersect) << testing::PrintToString(other);
        EXPECT_EQ(boxIntersectsBox(other, box), intersect) << "the other way";
    }
}

TEST_F(MovementTest, normals_show_the_side_or_corner) {
    const Box wall{{10, 10}, 4, 2};
    const struct {
        Vector position, velocity, normal;
    } cases[] = {
        {{12, 9}, {0, 1}, {0, -1}},   {{12, 13}, {0, -1}, {0, 1}},
        {{9, 11}, {1, 0}, {-1, 0}},   {{15, 11}, {-1, 0}, {1, 0}},
        {{9, 9}, {2, 2}, {-1, -1}},   {{15, 9}, {-2, 2}, {1, -1}},
        {{9, 13}, {2, -2}, {-1, 1}},  {{15, 13}, {-2, -2}, {1, 1}},
        {{9.8F, 9}, {0, 1}, {0, -1}}, // From above, over the left edge: a side wins.
    };
    for (const auto &c : cases)
        EXPECT_EQ(getNormal(Box::cell(), c.position, c.velocity, wall), c.normal);
}

// Each pass scales what the earlier passes have left. The first mover gets 8, 8, 10, 11.25, 11.95,
// 12.3 and 12.9 cells far, behind the wall. The sixth pass leaves the second one at 14.5, before
// its wall, the seventh at 21.5, just behind it, and an eighth would take it to 32. The third is
// hit at 11 and then never leaves its start. A bisection would find the first and the third before
// the wall.
TEST_F(MovementTest, seven_passes_find_the_last_free_position) {
    const Box point{{0, 0}, 0, 0};
    const Box wall{{10, -1}, 2, 2};
    EXPECT_EQ(getNormal(point, {0, 0}, {16, 0}, wall), (Vector{1, 0}));
    EXPECT_EQ(getNormal(point, {0, 0}, {8, 0}, {{17, -1}, 3, 2}), (Vector{1, 0}));
    EXPECT_EQ(getNormal(point, {0, 0}, {22, 0}, wall), (Vector{0, 0}));
    expectLogged({"getNormal(): collision not detected. Returning (0,0)."});
}

TEST_F(MovementTest, every_pair_of_solidness_collides_by_rule) {
    const Vector from{5, 5};
    const Vector to{6, 5};
    for (int combination = 0; combination < 36; ++combination) {
        const auto mover = static_cast<Solidness>(combination % 3);
        const auto other = static_cast<Solidness>(combination / 3 % 3);
        const bool no_soft = combination / 9 % 2 == 1;
        const bool avoid = combination / 18 == 1;
        SCOPED_TRACE(std::to_string(mover) + " into " + std::to_string(other) +
                     (no_soft ? ", no soft" : "") + (avoid ? ", avoiding" : ""));
        diary.clear();
        const std::unique_ptr<Witness> p_mover(make("mover", from, mover));
        const std::unique_ptr<Witness> p_other(make("other", to, other));
        p_mover->setNoSoft(no_soft);
        p_mover->setAvoidCollisions(avoid);

        const bool slides = avoid && mover == HARD && other == HARD;
        const bool meets = mover != SPECTRAL && other != SPECTRAL && !slides;
        const bool stops =
            meets && ((mover == HARD && other == HARD) || (no_soft && other == SOFT));
        // Standing still, it slides by nothing: it has moved to where it was.
        EXPECT_EQ(world.moveObject(p_mover.get(), to), stops ? -1 : 0);
        EXPECT_EQ(p_mover->getPosition(), stops || slides ? from : to);
        EXPECT_EQ(diary,
                  meets ? (Diary{"mover: sv-collision into", "other: sv-collision by"}) : Diary{});
    }
}

TEST_F(MovementTest, a_stopped_mover_still_meets_all) {
    Witness *p_mover = make("mover", {5, 5});
    make("wall", {6, 5});
    make("mist", {6, 5}, SOFT);
    make("ghost", {6, 5}, SPECTRAL);
    p_mover->on_event = [](const Event *p_event) {
        EXPECT_EQ(eventCast<EventCollision>(p_event)->getPosition(), (Vector{6, 5}));
    };
    EXPECT_EQ(world.moveObject(p_mover, {6, 5}), -1);
    EXPECT_EQ(diary, (Diary{"mover: sv-collision into", "wall: sv-collision by",
                            "mover: sv-collision into", "mist: sv-collision by"}));
    EXPECT_EQ(world.moveObject(p_mover, {4.99F, 5}), 0) << "a cell away, default boxes don't touch";
}

TEST_F(MovementTest, hard_movers_slide_along_hard_faces) {
    const Box below{{-0.5F, 5.5F}, 80, 1};
    const Box right{{5.5F, -0.5F}, 1, 24};
    const struct {
        const char *obstacle;
        Box first, second;
        Vector velocity, end;
        Diary diary = {};
    } cases[] = {
        {"a wall below", below, {}, {0.6F, 0.8F}, {6, 5}, {"mover: sv-collision into"}},
        {"a wall above", {{-0.5F, 3.4F}, 80, 1}, {}, {-0.6F, -0.8F}, {4, 5}},
        {"a wall to the right", right, {}, {0.8F, -0.6F}, {5, 4}},
        {"a corner", {{5.5F, 5.5F}, 1, 1}, {}, {0.6F, 0.8F}, {4.4F, 5.8F}},
        {"no way to slide", below, right, {0.6F, 0.8F}, {5, 5}},
    };
    Witness *p_mover = make("mover", {5, 5});
    p_mover->setAvoidCollisions(true);
    p_mover->on_event = [](const Event *p_event) {
        EXPECT_EQ(eventCast<EventCollision>(p_event)->getPosition(), (Vector{6, 5}));
    };
    auto *p_mist = new Object; // On the way, but only where it slides to.
    p_mist->setSolidness(SOFT);
    p_mist->setPosition({6, 5});
    Witness *walls[] = {make("wall", {0, 0}), make("wall", {0, 0})};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.obstacle);
        walls[0]->setBox(c.first);
        walls[1]->setBox(c.second);
        p_mover->setPosition({5, 5});
        p_mover->setVelocity(c.velocity);
        diary.clear();
        world.update();
        EXPECT_NEAR(p_mover->getPosition().x, c.end.x, 1e-6F);
        EXPECT_NEAR(p_mover->getPosition().y, c.end.y, 1e-6F);
        EXPECT_EQ(p_mover->getVelocity(), c.velocity) << "its own motion is not changed";
        EXPECT_EQ(diary, c.diary);
    }
    expectLogged({"WorldManager::moveObject(): Double collision. Object (avoid obstacles) "
                  "cannot move."});
}

TEST_F(MovementTest, leaving_the_world_sends_one_event) {
    Witness *p_o = make("o", {78, 5}, SPECTRAL);
    world.moveObject(p_o, {80.4F, 5});
    EXPECT_EQ(diary, Diary{}) << "a part of it is still inside";
    world.moveObject(p_o, {81, 5});
    EXPECT_EQ(diary, Diary{"o: sv-out"});
    world.moveObject(p_o, {90, 5});
    world.moveObject(p_o, {40, 5});
    p_o->setPosition({-40, 5});
    EXPECT_EQ(diary, Diary{"o: sv-out"}) << "not further out, on the way back, or by setPosition()";
}

TEST_F(MovementTest, the_view_follows_beyond_the_slack) {
    world.setBoundary({{0, 0}, 200, 100});
    Witness *p_o = make("o", {30, 20}, SPECTRAL);
    world.setViewFollowing(p_o);
    const Vector half{0.5F, 0.5F}; // About (30, 20), the view's centre: 20 to 40 and 15 to 25.
    const struct {
        Vector to, slack, corner;
    } cases[] = {
        {{40, 25}, half, {10, 10}}, {{41, 20}, half, {11, 10}},   {{18, 20}, half, {8, 10}},
        {{30, 30}, half, {10, 15}}, {{15, 12}, half, {5, 7}},     {{31, 19}, {0, 0}, {11, 9}},
        {{1, 1}, half, {0, 0}},     {{50, 30}, {1, 1}, {10, 10}}, {{198, 99}, half, {160, 80}},
    };
    for (const auto &c : cases) {
        world.setView({{10, 10}, 40, 20});
        world.setViewSlack(c.slack);
        world.moveObject(p_o, c.to);
        EXPECT_EQ(world.getView().corner, c.corner) << "to " << c.to.x << ", " << c.to.y;
    }
    EXPECT_EQ(logText().find("view slack"), std::string::npos) << "0 and 1 are in range";
    world.setView({{10, 10}, 400, 200});
    world.setViewPosition({150, 50});
    EXPECT_EQ(world.getView(), (Box{{0, 0}, 400, 200})) << "larger than the boundary";
    p_o->setPosition({150, 50});
    world.setView({{10, 10}, 40, 20});
    world.moveObject(make("bystander", {150, 50}, SPECTRAL), {151, 50});
    EXPECT_EQ(world.getView().corner, (Vector{10, 10})) << "not for another";
    world.removeObject(p_o);
    world.moveObject(p_o, {100, 50});
    EXPECT_EQ(world.getView().corner, (Vector{10, 10})) << "not for one that has left the world";
}

TEST_F(MovementTest, the_world_starts_as_large_as_the_window) {
    world.setViewSlack({1.5F, 0.5F});
    EXPECT_EQ(world.getViewSlack(), (Vector{1.5F, 0.5F})) << "out of range, and kept";
    expectLogged({"WorldManager::setViewSlack(): Warning! view slack units out of range [0-1]"});
    for (const Box &window : {Box{{0, 0}, 80, 24}, Box{}}) {
        world.shutDown();
        world.setWindow(window);
        ASSERT_EQ(world.startUp(), 0);
        EXPECT_EQ(world.getBoundary(), window);
        EXPECT_EQ(world.getView(), window);
    }
    EXPECT_EQ(world.getViewSlack(), (Vector{0, 0}));
}

} // namespace
} // namespace sv
