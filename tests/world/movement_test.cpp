#include "support/WorldTest.h"

#include "selvane/core/LogManager.h"

#include <array>
#include <cstddef>
#include <memory>
#include <new>

namespace sv {
namespace {

using test::Diary;
using test::Witness;

class MovementTest : public test::WorldTest {
  protected:
    /// An object that the diary calls `name`.
    Witness *make(const std::string &name, Vector position, Solidness solidness = HARD) {
        auto *p_o = new Witness(name, diary);
        p_o->setSolidness(solidness);
        p_o->setPosition(position);
        return p_o;
    }
};

TEST_F(MovementTest, who_is_told_and_who_stops_for_every_pair_of_solidness) {
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

TEST_F(MovementTest, all_that_stand_there_are_told_also_after_one_has_stopped_the_mover) {
    Witness *p_mover = make("mover", {5, 5});
    make("wall", {6, 5});
    make("mist", {6, 5}, SOFT);
    make("ghost", {6, 5}, SPECTRAL);
    p_mover->on_event = [](const Event *p_event) {
        const auto *p_collision = dynamic_cast<const EventCollision *>(p_event);
        ASSERT_TRUE(p_collision);
        EXPECT_EQ(p_collision->getPosition(), (Vector{6, 5}));
    };
    EXPECT_EQ(world.moveObject(p_mover, {6, 5}), -1);
    EXPECT_EQ(diary, (Diary{"mover: sv-collision into", "wall: sv-collision by",
                            "mover: sv-collision into", "mist: sv-collision by"}));
}

TEST_F(MovementTest, default_boxes_a_cell_apart_do_not_meet) {
    Witness *p_mover = make("mover", {5, 5});
    make("wall", {7, 5});
    EXPECT_EQ(world.moveObject(p_mover, {6, 5}), 0);
    EXPECT_EQ(world.moveObject(p_mover, {6.02F, 5}), -1);
    EXPECT_EQ(p_mover->getPosition(), (Vector{6, 5}));
}

class AvoidingTest : public MovementTest {
  protected:
    AvoidingTest() : p_mover(make("mover", {5, 5})) { p_mover->setAvoidCollisions(true); }

    Witness *wall(const Box &in_world) {
        Witness *p_wall = make("wall", {0, 0});
        p_wall->setBox(in_world);
        return p_wall;
    }

    Witness *p_mover;
};

TEST_F(AvoidingTest, a_hard_mover_slides_along_a_hard_face_and_turns_back_at_a_corner) {
    const struct {
        const char *obstacle;
        Box in_world;
        Vector velocity;
        Vector end;
    } cases[] = {
        {"a wall below", {{-0.5F, 5.5F}, 80, 1}, {0.6F, 0.8F}, {6, 5}},
        {"a wall above", {{-0.5F, 3.4F}, 80, 1}, {-0.6F, -0.8F}, {4, 5}},
        {"a wall to the right", {{5.5F, -0.5F}, 1, 24}, {0.8F, -0.6F}, {5, 4}},
        {"a corner", {{5.5F, 5.5F}, 1, 1}, {0.6F, 0.8F}, {4.4F, 5.8F}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.obstacle);
        std::unique_ptr<Witness> p_wall(wall(c.in_world));
        p_mover->setPosition({5, 5});
        p_mover->setVelocity(c.velocity);
        world.update();
        EXPECT_NEAR(p_mover->getPosition().x, c.end.x, 1e-6F);
        EXPECT_NEAR(p_mover->getPosition().y, c.end.y, 1e-6F);
        EXPECT_EQ(p_mover->getVelocity(), c.velocity) << "its own way is not changed";
        EXPECT_EQ(diary, Diary{}) << "nobody is told";
        p_wall.reset();
        diary.clear();
    }
}

TEST_F(AvoidingTest, blocked_where_it_slides_to_it_stays_and_nobody_is_told) {
    wall({{-0.5F, 5.5F}, 80, 1});
    wall({{5.5F, -0.5F}, 1, 5.5F});
    p_mover->setVelocity({0.6F, 0.8F});
    EXPECT_EQ(world.moveObject(p_mover, p_mover->predictPosition()), -1);
    EXPECT_EQ(p_mover->getPosition(), (Vector{5, 5}));
    EXPECT_EQ(diary, Diary{});
    expectLogged({"WorldManager::moveObject(): Double collision. Object (avoid obstacles) "
                  "cannot move."});
}

TEST_F(AvoidingTest, soft_objects_where_it_slides_to_are_told_of_that_place) {
    wall({{-0.5F, 5.5F}, 80, 1});
    make("mist", {6, 5}, SOFT);
    p_mover->setVelocity({0.6F, 0.8F});
    p_mover->on_event = [](const Event *p_event) {
        EXPECT_EQ(dynamic_cast<const EventCollision *>(p_event)->getPosition(), (Vector{6, 5}));
    };
    world.update();
    EXPECT_EQ(p_mover->getPosition(), (Vector{6, 5}));
    EXPECT_EQ(diary, (Diary{"mover: sv-collision into", "mist: sv-collision by"}));
}

TEST_F(MovementTest, leaving_the_world_is_told_once) {
    Witness *p_o = make("o", {78, 5}, SPECTRAL);
    world.moveObject(p_o, {80.4F, 5});
    EXPECT_EQ(diary, Diary{}) << "a part of it is still inside";
    world.moveObject(p_o, {81, 5});
    EXPECT_EQ(diary, Diary{"o: sv-out"});
    world.moveObject(p_o, {90, 5});
    world.moveObject(p_o, {40, 5});
    EXPECT_EQ(diary, Diary{"o: sv-out"}) << "neither further out nor on the way back";
    p_o->setPosition({-40, 5});
    EXPECT_EQ(diary, Diary{"o: sv-out"}) << "setting a position is no move";
}

TEST_F(MovementTest, the_view_follows_its_object_as_it_leaves_the_slack) {
    world.setBoundary({{0, 0}, 200, 100});
    Witness *p_o = make("o", {30, 20}, SPECTRAL);
    world.setViewFollowing(p_o);
    const Vector half{0.5F, 0.5F}; // About (30, 20), the view's centre: 20 to 40 and 15 to 25.
    const struct {
        Vector to;
        Vector slack;
        Vector corner;
    } cases[] = {
        {{40, 25}, half, {10, 10}}, {{41, 20}, half, {11, 10}}, {{18, 20}, half, {8, 10}},
        {{30, 30}, half, {10, 15}}, {{15, 12}, half, {5, 7}},   {{31, 19}, {0, 0}, {11, 9}},
        {{1, 1}, half, {0, 0}},
    };
    const auto look = [&] { world.setView({{10, 10}, 40, 20}); };
    for (const auto &c : cases) {
        look();
        world.setViewSlack(c.slack);
        world.moveObject(p_o, c.to);
        EXPECT_EQ(world.getView().corner, c.corner) << "to " << c.to.x << ", " << c.to.y;
    }
    look();
    p_o->setPosition({150, 50});
    world.moveObject(make("bystander", {150, 50}, SPECTRAL), {151, 50});
    EXPECT_EQ(world.getView().corner, (Vector{10, 10})) << "neither set nor of another";
    world.setViewSlack({1.5F, 0.5F});
    EXPECT_EQ(world.getViewSlack(), (Vector{1.5F, 0.5F})) << "out of range, and kept";
    expectLogged({"WorldManager::setViewSlack(): Warning! view slack units out of range [0-1]"});
}

TEST_F(MovementTest, the_view_does_not_follow_what_comes_to_live_where_its_object_was) {
    alignas(Object) std::array<std::byte, sizeof(Object)> place;
    auto *p_first = new (place.data()) Object;
    world.setViewFollowing(p_first);
    p_first->~Object();
    auto *p_second = new (place.data()) Object;
    world.setBoundary({{0, 0}, 200, 100});
    world.moveObject(p_second, {150, 50});
    EXPECT_EQ(world.getView().corner, (Vector{0, 0}));
    p_second->~Object();
}

} // namespace
} // namespace sv
