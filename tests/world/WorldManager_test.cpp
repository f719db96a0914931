#include "selvane/world/WorldManager.h"

#include "selvane/loop/GameManager.h"
#include "support/WorldTest.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <memory>
#include <random>

namespace sv {
namespace {

using test::Diary;
using test::Witness;

struct WorldManagerTest : test::WorldTest {
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
    EXPECT_EQ(a.setActive(false), 0);
    EXPECT_EQ(world.markForDelete(&a), 0);
    EXPECT_EQ(world.markForDelete(&a), 0); // Once is enough.
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

using Objects = std::vector<Object *>;

/// A list of the graph has each of the objects that belong to it once, and nothing else.
void expectExactly(const ObjectList &list, const Objects &objects,
                   const std::function<bool(const Object &)> &belongs) {
    Objects expected;
    std::copy_if(objects.begin(), objects.end(), std::back_inserter(expected),
                 [&](const Object *p_o) { return belongs(*p_o); });
    EXPECT_TRUE(std::is_permutation(list.begin(), list.end(), expected.begin(), expected.end()));
}

void expectFiledAsTheFieldsSay(const SceneGraph &graph, const Objects &objects) {
    const auto is_active = [](const Object &o) { return o.isActive(); };
    expectExactly(graph.activeObjects(), objects, is_active);
    expectExactly(graph.inactiveObjects(), objects, std::not_fn(is_active));
    for (int altitude = 0; altitude <= MAX_ALTITUDE; ++altitude)
        expectExactly(graph.visibleObjects(altitude), objects, [&](const Object &o) {
            return o.isActive() && o.isVisible() && o.getAltitude() == altitude;
        });
    for (const char *type : {"(Undefined)", "Saucer", "Saucers"})
        expectExactly(graph.objectsOfType(type), objects,
                      [&](const Object &o) { return o.isActive() && o.getType() == type; });
    if (objects.empty())
        return;
    // The solid list shows only in collisions: all objects stand on one cell.
    const Object *p_mover = objects.front();
    expectExactly(graph.getCollisions(p_mover, {1, 1}), objects,
                  [&](const Object &o) { return &o != p_mover && o.isActive() && o.isSolid(); });
}

/// Makes, deletes or changes one object of up to twelve.
void changeOne(Objects &objects, std::mt19937 &random) {
    static const char *const changes[] = {
        "is_active:true,",
        "is_active:false,",
        "is_active:false,altitude:1,solidness:0,",
        "is_visible:true,",
        "altitude:0,",
        "is_active:true,altitude:4,solidness:2,",
        "is_visible:false,",
        "altitude:3,",
        "altitude:5,",
        "solidness:1,",
        "solidness:2,",
        "solidness:-1,",
        "type:Saucer,",
        "type:Saucers,",
        "type:(Undefined),",
        "box-corner-x:-1,box-corner-y:0,box-horizontal:3,box-vertical:1,"};
    const std::size_t dice = random() % (std::size(changes) + 4);
    if (objects.empty() || (dice < 3 && objects.size() < 12)) {
        objects.push_back(new Object);
        return;
    }
    Object *p_chosen = objects[random() % objects.size()];
    if (dice >= 4) {
        p_chosen->deserialize(changes[dice - 4]);
        return;
    }
    std::erase(objects, p_chosen);
    delete p_chosen;
}

struct SceneGraphTest : test::WorldTest {
    SceneGraph &graph = world.getSceneGraph();
};

TEST_F(SceneGraphTest, lists_agree_with_fields) {
    for (unsigned seed = 1; seed <= 20 && !HasFailure(); ++seed) {
        std::mt19937 random(seed);
        Objects objects;
        for (int i = 0; i < 300 && !HasFailure(); ++i) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", change " + std::to_string(i));
            changeOne(objects, random);
            expectFiledAsTheFieldsSay(graph, objects);
        }
        for (const Object *p_o : objects)
            delete p_o;
    }
    EXPECT_EQ(graph.firstObject(), nullptr);
}

TEST_F(SceneGraphTest, unknown_altitudes_have_no_objects) {
    for (const int altitude : {5, -1}) {
        EXPECT_TRUE(graph.visibleObjects(altitude).isEmpty());
        expectLogged({"SceneGraph::visibleObjects(): Warning! altitude " +
                      std::to_string(altitude) + " not in [0,4]."});
    }
}

TEST_F(SceneGraphTest, active_invisible_objects_keep_their_altitude) {
    auto *p_o = new Object;
    p_o->setVisible(false);
    EXPECT_EQ(p_o->setAltitude(3), -1);
    EXPECT_EQ(p_o->getAltitude(), 2);
    EXPECT_EQ(logCount("SceneGraph::updateAltitude(): remove from old altitude (2) failed!"), 1);

    GameManager::getInstance().setGameOver();
    EXPECT_EQ(p_o->setAltitude(3), 0) << "while the game is over nothing is refused";
    p_o->setVisible(true);
    EXPECT_TRUE(graph.visibleObjects(3).contains(p_o));
}

// An object made before the world is in no list. What is then done to it in the scene graph must
// not outlive it, or the world's shut-down deletes it twice.
TEST_F(SceneGraphTest, objects_never_filed_leave_nothing_behind) {
    world.shutDown();
    auto stray = std::make_unique<Object>();
    ASSERT_EQ(world.startUp(), 0);
    stray->setType("Stray");
    said();
    EXPECT_EQ(graph.updateType(stray.get(), "Other"), -1);
    EXPECT_EQ(graph.updateVisible(stray.get(), false), -1);
    EXPECT_EQ(graph.updateActive(stray.get(), false), -1);
    EXPECT_EQ(said(), "SceneGraph::updateType(): Error! Unable to remove Object (1) type Stray\n"
                      "SceneGraph::updateVisible(): unable to remove visible object (Stray)\n"
                      "SceneGraph::updateActive(): remove object (Stray) failed for objects!\n"
                      "SceneGraph::updateActive(): remove visible object (Stray) failed for "
                      "visible_objects!\n"
                      "SceneGraph::updateActive(): remove object (Stray) failed for "
                      "solid_objects!\n");
    stray.reset();
    const std::string removed = said();
    EXPECT_TRUE(removed.starts_with(
        "SceneGraph::removeObject(): Error removing Object (id 1)! Pointer is "));
    EXPECT_TRUE(world.getAllObjects(true).isEmpty());
}

TEST_F(SceneGraphTest, collisions_come_in_solid_order) {
    Object *const objects[] = {new Object, new Object, new Object};
    for (const Solidness solidness : {SPECTRAL, SOFT, HARD})
        EXPECT_EQ(objects[0]->setSolidness(solidness), 0);
    const ObjectList met = graph.getCollisions(objects[2], {1, 1});
    EXPECT_EQ(met.at(0), objects[1]);
    EXPECT_EQ(met.at(1), objects[0]) << "solid again, and so the last";
}

} // namespace
} // namespace sv
