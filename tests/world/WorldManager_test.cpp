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

TEST_F(WorldManagerTest, marked_objects_die_with_the_update) {
    auto *p_a = new Witness("a", diary);
    auto *p_b = new Witness("b", diary);
    auto *p_c = new Witness("c", diary);
    for (Witness *p_o : {p_a, p_b, p_c})
        p_o->registerInterest("hello");
    p_a->setVelocity({100, 0});
    p_a->on_event = [&](const Event *) { world.markForDelete(world.getAllObjects(true)); };
    p_b->on_event = [&](const Event *) { p_c->setActive(false); };
    Event hello;
    hello.setType("hello");
    EXPECT_EQ(world.onEvent(&hello), 2);
    EXPECT_EQ(diary, (Diary{"a: hello", "b: hello"}));
    diary.clear();
    world.update();
    EXPECT_EQ(diary, (Diary{"a: sv-out", "a: gone", "b: gone", "c: gone"}));
    EXPECT_EQ(world.onEvent(&hello), 0);
}

TEST_F(WorldManagerTest, destructors_may_mark_and_delete) {
    auto *p_first = new Witness("first", diary);
    auto *p_second = new Witness("second", diary);
    auto *p_third = new Witness("third", diary);
    p_first->on_death = [&] {
        world.markForDelete(p_second);
        world.markForDelete(p_third);
        world.markForDelete(p_first); // Itself.
    };
    p_second->on_death = [&] { delete p_third; };
    world.markForDelete(p_first);
    world.update();
    EXPECT_EQ(diary, (Diary{"first: gone", "third: gone", "second: gone"}));
}

TEST_F(WorldManagerTest, shut_down_deletes_the_active_first) {
    auto *p_asleep = new Witness("asleep", diary);
    auto *p_awake = new Witness("awake", diary);
    auto *p_victim = new Witness("victim", diary);
    p_asleep->setActive(false);
    world.markForDelete(p_asleep);
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

TEST_F(WorldManagerTest, objects_in_view_are_drawn_by_altitude) {
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

TEST_F(WorldManagerTest, types_of_other_managers_are_refused) {
    Object *p_o = new Object;
    for (const char *type : {COLLISION_EVENT, OUT_EVENT, STEP_EVENT})
        EXPECT_EQ(world.registerInterest(p_o, type), -1);
    expectLogged({"WorldManager::isValid(): Event sv-collision handled automatically.",
                  "WorldManager::isValid(): Event sv-out handled automatically.",
                  "WorldManager::isValid(): WorldManager does not handle sv-step"});
    EXPECT_EQ(p_o->registerInterest(PATH_EVENT), 0);
}

TEST_F(WorldManagerTest, searches_forget_deleted_targets) {
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
