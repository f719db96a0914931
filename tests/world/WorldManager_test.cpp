#include "selvane/world/WorldManager.h"

#include "selvane/core/LogManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/path/PathFind.h"
#include "selvane/path/PathManager.h"
#include "support/WorldTest.h"

#include <memory>

namespace sv {
namespace {

using test::Diary;
using test::Witness;
using WorldManagerTest = test::WorldTest;

TEST_F(WorldManagerTest, a_marked_object_lives_to_the_end_of_the_update_and_dies_once) {
    auto *p_a = new Witness("a", diary);
    new Witness("b", diary);
    p_a->setVelocity({100, 0});
    world.markForDelete(p_a);
    world.markForDelete(p_a);
    world.markForDelete(world.getAllObjects());
    EXPECT_EQ(diary, Diary{});
    world.update();
    EXPECT_EQ(diary, (Diary{"a: sv-out", "a: gone", "b: gone"}));
    world.update();
    EXPECT_TRUE(world.getAllObjects(true).isEmpty());
}

TEST_F(WorldManagerTest, what_a_destructor_marks_is_deleted_in_the_same_update) {
    auto *p_first = new Witness("first", diary);
    auto *p_second = new Witness("second", diary);
    auto *p_third = new Witness("third", diary);
    p_first->on_death = [&] {
        world.markForDelete(p_second);
        world.markForDelete(p_third);
        world.markForDelete(p_first); // Itself: it is as good as gone.
    };
    p_second->on_death = [&] { delete p_third; }; // No game should, and none is harmed.
    world.markForDelete(p_first);
    world.update();
    EXPECT_EQ(diary, (Diary{"first: gone", "third: gone", "second: gone"}));
}

TEST_F(WorldManagerTest, marking_during_delivery_keeps_the_receivers_alive) {
    std::vector<Witness *> all;
    for (const char *name : {"a", "b", "c"}) {
        all.push_back(new Witness(name, diary));
        all.back()->registerInterest("hello");
    }
    all[0]->on_event = [&](const Event *) { world.markForDelete(world.getAllObjects(true)); };
    all[1]->on_event = [&](const Event *) { all[2]->setActive(false); };
    Event hello;
    hello.setType("hello");
    EXPECT_EQ(world.onEvent(&hello), 2);
    world.update();
    EXPECT_EQ(diary, (Diary{"a: hello", "b: hello", "a: gone", "b: gone", "c: gone"}));
    EXPECT_EQ(world.onEvent(&hello), 0);
}

TEST_F(WorldManagerTest, objects_made_during_the_update_move_in_the_next) {
    auto *p_parent = new Witness("parent", diary);
    p_parent->setVelocity({100, 0});
    Object *p_child = nullptr;
    p_parent->on_event = [&](const Event *) {
        p_child = new Object;
        p_child->setPosition({40, 10});
        p_child->setVelocity({0, 1});
    };
    world.update();
    ASSERT_TRUE(p_child);
    EXPECT_EQ(p_child->getPosition(), (Vector{40, 10}));
    world.update();
    EXPECT_EQ(p_child->getPosition(), (Vector{40, 11}));
}

TEST_F(WorldManagerTest, shut_down_deletes_every_object_the_active_first) {
    auto *p_asleep = new Witness("asleep", diary);
    auto *p_awake = new Witness("awake", diary);
    auto *p_victim = new Witness("victim", diary);
    p_asleep->setActive(false);
    world.markForDelete(p_asleep);
    // What a destructor deletes, makes inactive or makes anew does not upset it.
    std::unique_ptr<Object> late;
    p_awake->on_death = [&] {
        delete p_victim;
        late = std::make_unique<Object>();
    };
    GameManager::getInstance().setGameOver();
    world.shutDown();
    EXPECT_EQ(diary, (Diary{"victim: gone", "awake: gone", "asleep: gone"}));
    ASSERT_EQ(world.startUp(), 0);
    EXPECT_TRUE(world.getAllObjects(true).isEmpty());
    world.update();
}

TEST_F(WorldManagerTest, an_object_made_before_the_start_is_not_of_the_world) {
    world.shutDown();
    const auto early = std::make_unique<Witness>("early", diary);
    expectLogged({"WorldManager::insertObject(): Warning! Not adding Object 1",
                  "                              because WorldManager not started."});
    ASSERT_EQ(world.startUp(), 0);
    world.setView({{0, 0}, 80, 24});
    early->setVelocity({1, 0});
    world.update();
    world.draw();
    EXPECT_EQ(early->getPosition(), (Vector{1, 1}));
    EXPECT_EQ(diary, Diary{});
}

TEST_F(WorldManagerTest, drawing_goes_by_altitude_and_skips_what_the_view_does_not_show) {
    const struct {
        const char *name;
        int altitude;
        Vector position;
    } objects[] = {{"high", 4, {10, 5}},       {"low", 0, {10, 5}},
                   {"middle", 2, {10, 5}},     {"middle too", 2, {10, 5}},
                   {"outside", 2, {81, 5}},    {"at the edge", 2, {80.5F, 5}},
                   {"not visible", 2, {10, 5}}};
    for (const auto &o : objects) {
        auto *p_o = new Witness(o.name, diary);
        p_o->setAltitude(o.altitude);
        p_o->setPosition(o.position);
        p_o->setVisible(std::string(o.name) != "not visible");
    }
    world.draw();
    EXPECT_EQ(diary, (Diary{"low: drawn", "middle: drawn", "middle too: drawn",
                            "at the edge: drawn", "high: drawn"}));
}

TEST_F(WorldManagerTest, types_of_other_managers_are_refused_with_a_word) {
    Object *p_o = new Object;
    for (const char *type : {COLLISION_EVENT, OUT_EVENT, STEP_EVENT})
        EXPECT_EQ(world.registerInterest(p_o, type), -1);
    expectLogged({"WorldManager::isValid(): Event sv-collision handled automatically.",
                  "WorldManager::isValid(): Event sv-out handled automatically.",
                  "WorldManager::isValid(): WorldManager does not handle sv-step"});
    EXPECT_EQ(p_o->registerInterest(PATH_EVENT), 0);
    EXPECT_EQ(p_o->registerInterest("sv-step "), 0) << "another type, and the world's";
}

TEST_F(WorldManagerTest, a_search_for_a_path_forgets_a_target_that_is_gone) {
    Object *p_hunter = new Object;
    Object *p_prey = new Object;
    PathFind search(p_hunter, p_prey);
    PathManager::getInstance().add(&search);
    world.markForDelete(p_prey);
    world.update();
    EXPECT_EQ(search.getTarget(), nullptr);
    PathManager::getInstance().remove(&search);
}

} // namespace
} // namespace sv
