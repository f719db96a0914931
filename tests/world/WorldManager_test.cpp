#include "selvane/world/WorldManager.h"

#include "selvane/loop/GameManager.h"
#include "support/WorldTest.h"

#include <memory>

namespace sv {
namespace {

using test::Diary;
using test::Witness;

class WorldManagerTest : public test::WorldTest {
  protected:
    Witness &a = *new Witness("a", diary);
    Witness &b = *new Witness("b", diary);
    Witness &c = *new Witness("c", diary);
};

TEST_F(WorldManagerTest, marked_objects_die_with_the_update) {
    for (Witness *p_o : {&a, &b, &c})
        p_o->registerInterest("hello");
    a.setVelocity({100, 0});
    a.on_event = [&](const Event *) { world.markForDelete(world.getAllObjects(true)); };
    b.on_event = [&](const Event *) { c.setActive(false); };
    EXPECT_EQ(send("hello"), 2);
    EXPECT_EQ(diary, (Diary{"a: hello", "b: hello"}));
    diary.clear();
    world.update();
    EXPECT_EQ(diary, (Diary{"a: sv-out", "a: gone", "b: gone", "c: gone"}));
    EXPECT_EQ(send("hello"), 0);
}

TEST_F(WorldManagerTest, destructors_may_mark_and_delete) {
    a.on_death = [&] {
        for (Witness *p_o : {&b, &c, &a})
            world.markForDelete(p_o);
    };
    b.on_death = [&] { delete &c; };
    world.markForDelete(&a);
    world.update();
    EXPECT_EQ(diary, (Diary{"a: gone", "c: gone", "b: gone"}));
}

TEST_F(WorldManagerTest, shut_down_deletes_the_active_first) {
    a.setActive(false);
    world.markForDelete(&a);
    std::unique_ptr<Object> late;
    b.on_death = [&] {
        delete &c;
        late = std::make_unique<Object>();
    };
    GameManager::getInstance().setGameOver();
    world.shutDown();
    EXPECT_EQ(diary, (Diary{"c: gone", "b: gone", "a: gone"}));
    ASSERT_EQ(world.startUp(), 0);
    EXPECT_TRUE(world.getAllObjects(true).isEmpty());
    world.update();
}

TEST_F(WorldManagerTest, objects_in_view_are_drawn_by_altitude) {
    const auto make = [&](const char *name, int altitude, Vector position) {
        auto *p_o = new Witness(name, diary);
        p_o->setAltitude(altitude);
        p_o->setPosition(position);
    };
    for (Witness *p_o : {&a, &b, &c})
        p_o->setVisible(p_o != &b);
    make("high", 4, {10, 5});
    make("low", 0, {10, 5});
    make("outside", 2, {81, 5});
    make("at the edge", 2, {80.5F, 5});
    world.draw();
    EXPECT_EQ(diary,
              (Diary{"low: drawn", "a: drawn", "c: drawn", "at the edge: drawn", "high: drawn"}));
}

} // namespace
} // namespace sv
