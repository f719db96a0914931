#include "selvane/core/LogManager.h"
#include "selvane/loop/GameManager.h"
#include "support/WorldTest.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <iterator>
#include <memory>
#include <random>

namespace sv {
namespace {

class SceneGraphTest : public test::WorldTest {
  protected:
    SceneGraphTest() : graph(world.getSceneGraph()) {}

    SceneGraph &graph;
};

int countOf(const ObjectList &list, const Object *p_o) {
    return static_cast<int>(std::count(list.begin(), list.end(), p_o));
}

using Objects = std::vector<Object *>;

/// A list of the graph has each of the objects that belong to it once, and nothing else.
void expectExactly(const ObjectList &list, const Objects &objects,
                   const std::function<bool(const Object &)> &belongs) {
    int belonging = 0;
    for (const Object *p_o : objects) {
        belonging += belongs(*p_o);
        EXPECT_EQ(countOf(list, p_o), belongs(*p_o));
    }
    EXPECT_EQ(list.getCount(), belonging);
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
void strike(Objects &objects, std::mt19937 &random) {
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
    const auto chosen = objects.begin() + static_cast<std::ptrdiff_t>(random() % objects.size());
    if (dice >= 4) {
        (*chosen)->deserialize(changes[dice - 4]);
        return;
    }
    delete *chosen;
    objects.erase(chosen);
}

TEST_F(SceneGraphTest, lists_and_fields_agree_in_a_storm_of_changes) {
    LogManager::getInstance().shutDown(); // Refusals by the thousand are of no interest.
    test::CapturedErrors errors;
    for (unsigned seed = 1; seed <= 20 && !HasFailure(); ++seed) {
        std::mt19937 random(seed);
        Objects objects;
        for (int i = 0; i < 300 && !HasFailure(); ++i) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", stroke " + std::to_string(i));
            strike(objects, random);
            expectFiledAsTheFieldsSay(graph, objects);
        }
        for (const Object *p_o : objects)
            delete p_o;
    }
    EXPECT_EQ(graph.firstObject(), nullptr);
}

TEST_F(SceneGraphTest, an_altitude_that_is_none_has_no_objects) {
    new Object;
    EXPECT_TRUE(graph.visibleObjects(5).isEmpty());
    EXPECT_TRUE(graph.visibleObjects(-1).isEmpty());
    expectLogged({"SceneGraph::visibleObjects(): Warning! altitude 5 not in [0,4].",
                  "SceneGraph::visibleObjects(): Warning! altitude -1 not in [0,4]."});
}

TEST_F(SceneGraphTest, an_active_invisible_object_cannot_change_its_altitude) {
    auto *p_o = new Object;
    p_o->setVisible(false);
    EXPECT_EQ(p_o->setAltitude(3), -1);
    EXPECT_EQ(p_o->getAltitude(), 2);
    EXPECT_EQ(logCount("SceneGraph::updateAltitude(): remove from old altitude (2) failed!"), 1);

    GameManager::getInstance().setGameOver();
    EXPECT_EQ(p_o->setAltitude(3), 0) << "while the game is over nothing is refused";
    p_o->setVisible(true);
    EXPECT_EQ(countOf(graph.visibleObjects(3), p_o), 1);
}

// An object made before the world is in no list. What is then done to it in the scene graph must
// not outlive it, or the world's shut-down deletes it twice.
TEST_F(SceneGraphTest, an_object_that_was_never_filed_leaves_nothing_behind) {
    world.shutDown();
    auto stray = std::make_unique<Object>();
    ASSERT_EQ(world.startUp(), 0);
    stray->setType("Stray");
    EXPECT_EQ(graph.updateType(stray.get(), "Other"), -1);
    EXPECT_EQ(graph.updateActive(stray.get(), false), -1);
    EXPECT_EQ(graph.updateVisible(stray.get(), false), -1);
    expectLogged({"SceneGraph::updateType(): Error! Unable to remove Object (1) type Stray",
                  "SceneGraph::updateVisible(): unable to remove visible object (Stray)",
                  "SceneGraph::updateActive(): remove object (Stray) failed for objects!",
                  "SceneGraph::updateActive(): remove visible object (Stray) failed for "
                  "visible_objects!",
                  "SceneGraph::updateActive(): remove object (Stray) failed for solid_objects!"});

    char line[100]; // Systems write addresses in different ways.
    std::snprintf(line, sizeof line,
                  "SceneGraph::removeObject(): Error removing Object (id 1)! Pointer is %p.",
                  static_cast<void *>(stray.get()));
    stray.reset();
    expectLogged({line});
    EXPECT_TRUE(world.getAllObjects(true).isEmpty());
}

TEST_F(SceneGraphTest, collisions_come_in_the_order_of_the_solid_list) {
    auto *p_a = new Object;
    auto *p_b = new Object;
    auto *p_c = new Object;
    p_a->setSolidness(SPECTRAL);
    EXPECT_EQ(countOf(graph.getCollisions(p_c, {1, 1}), p_a), 0);
    p_a->setSolidness(SOFT); // Solid again, and last of them.
    const ObjectList met = graph.getCollisions(p_c, {1, 1});
    ASSERT_EQ(met.getCount(), 2);
    EXPECT_EQ(met.at(0), p_b);
    EXPECT_EQ(met.at(1), p_a);
    p_a->setSolidness(HARD); // Between the solid ones no list changes.
    EXPECT_EQ(graph.getCollisions(p_c, {1, 1}).at(1), p_a);
}

} // namespace
} // namespace sv
