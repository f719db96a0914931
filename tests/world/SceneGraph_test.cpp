#include "core/LogManager.h"
#include "loop/GameManager.h"
#include "support/WorldTest.h"

#include <algorithm>
#include <array>
#include <cstdio>
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

const std::vector<std::string> &typeNames() {
    static const std::vector<std::string> names{"(Undefined)", "Saucer", "Saucers", ""};
    return names;
}

/// Holds the scene graph against the fields of the objects: each list has exactly those that
/// belong there.
void expectFiledAsTheFieldsSay(const SceneGraph &graph, const std::vector<Object *> &objects) {
    int active = 0;
    int visible = 0;
    for (const Object *p_o : objects) {
        const bool a = p_o->isActive();
        active += a;
        visible += a && p_o->isVisible();
        EXPECT_EQ(countOf(graph.activeObjects(), p_o), a);
        EXPECT_EQ(countOf(graph.inactiveObjects(), p_o), !a);
        for (int altitude = 0; altitude <= MAX_ALTITUDE; ++altitude)
            EXPECT_EQ(countOf(graph.visibleObjects(altitude), p_o),
                      a && p_o->isVisible() && p_o->getAltitude() == altitude);
        for (const std::string &name : typeNames())
            EXPECT_EQ(countOf(graph.objectsOfType(name), p_o), a && p_o->getType() == name);
    }
    // The sizes: nothing else is in the lists.
    EXPECT_EQ(graph.activeObjects().getCount(), active);
    EXPECT_EQ(graph.inactiveObjects().getCount(), static_cast<int>(objects.size()) - active);
    int in_layers = 0;
    for (int altitude = 0; altitude <= MAX_ALTITUDE; ++altitude)
        in_layers += graph.visibleObjects(altitude).getCount();
    EXPECT_EQ(in_layers, visible);
    int of_types = 0;
    for (const std::string &name : typeNames())
        of_types += graph.objectsOfType(name).getCount();
    EXPECT_EQ(of_types, active);
}

/// The solid list shows only in collisions: all objects of the storm stand on one cell.
void expectSolidOnesCollide(const SceneGraph &graph, const std::vector<Object *> &objects) {
    if (objects.empty())
        return;
    const Object *p_mover = objects.front();
    const ObjectList met = graph.getCollisions(p_mover, {1, 1});
    int solid = 0;
    for (const Object *p_o : objects) {
        const bool s = p_o != p_mover && p_o->isActive() && p_o->isSolid();
        solid += s;
        EXPECT_EQ(countOf(met, p_o), s);
    }
    EXPECT_EQ(met.getCount(), solid);
}

class Storm {
  public:
    explicit Storm(unsigned seed) : random(seed) {}

    int upTo(int last) { return std::uniform_int_distribution<int>(0, last)(random); }

    void strike() {
        const int what = objects.empty() ? 0 : upTo(9);
        Object *p_o = objects.empty() ? nullptr : objects[pick()];
        switch (what) {
        case 0:
            if (objects.size() < 12)
                objects.push_back(new Object);
            break;
        case 1:
            objects.erase(std::find(objects.begin(), objects.end(), p_o));
            delete p_o;
            break;
        case 2:
        case 3:
            p_o->setActive(upTo(1) == 0);
            break;
        case 4:
            p_o->setVisible(upTo(1) == 0);
            break;
        case 5:
            p_o->setAltitude(upTo(6) - 1);
            break;
        case 6:
            p_o->setSolidness(static_cast<Solidness>(upTo(4) - 1));
            break;
        case 7:
            p_o->setType(typeNames()[static_cast<std::size_t>(upTo(3))]);
            break;
        case 8:
            p_o->setBox({{-0.5F, -0.5F}, 1.0F + static_cast<float>(upTo(3)), 1});
            break;
        default:
            p_o->deserialize("is_active:" + std::string(upTo(1) ? "true" : "false") +
                             ",altitude:" + std::to_string(upTo(5)) + ",solidness:-1,");
        }
    }

    std::vector<Object *> objects;

  private:
    std::size_t pick() {
        return static_cast<std::size_t>(upTo(static_cast<int>(objects.size()) - 1));
    }

    std::mt19937 random;
};

TEST_F(SceneGraphTest, lists_and_fields_agree_in_a_storm_of_setters) {
    LogManager::getInstance().shutDown(); // Refusals by the thousand are of no interest.
    test::CapturedErrors errors;
    for (unsigned seed = 1; seed <= 20 && !HasFailure(); ++seed) {
        Storm storm(seed);
        for (int i = 0; i < 300 && !HasFailure(); ++i) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", stroke " + std::to_string(i));
            storm.strike();
            expectFiledAsTheFieldsSay(graph, storm.objects);
            expectSolidOnesCollide(graph, storm.objects);
        }
        for (const Object *p_o : storm.objects)
            delete p_o;
    }
    EXPECT_EQ(graph.firstObject(), nullptr);
}

TEST_F(SceneGraphTest, an_altitude_that_is_none_has_no_objects) {
    new Object;
    EXPECT_TRUE(graph.visibleObjects(5).isEmpty());
    EXPECT_TRUE(graph.visibleObjects(-1).isEmpty());
    EXPECT_EQ(logCount("SceneGraph::visibleObjects(): Warning! altitude 5 not in [0,4]."), 1);
    EXPECT_EQ(logCount("SceneGraph::visibleObjects(): Warning! altitude -1 not in [0,4]."), 1);
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

// An object made before the world is in no list. What its setters then leave behind must not
// outlive it, or the world's shut-down deletes it twice.
TEST_F(SceneGraphTest, an_object_that_was_never_filed_leaves_nothing_behind) {
    world.shutDown();
    auto stray = std::make_unique<Object>();
    ASSERT_EQ(world.startUp(), 0);
    stray->setType("Stray");
    EXPECT_EQ(stray->setActive(false), -1);
    EXPECT_EQ(stray->setActive(false), -1);
    EXPECT_TRUE(stray->isActive());
    EXPECT_EQ(stray->setVisible(false), -1);
    for (const char *line :
         {"SceneGraph::updateType(): Error! Unable to remove Object (1) type (Undefined)",
          "SceneGraph::updateVisible(): unable to remove visible object (Stray)"})
        EXPECT_EQ(logCount(line), 1) << line;
    for (const char *list : {"remove object (Stray) failed for objects!",
                             "remove visible object (Stray) failed for visible_objects!",
                             "remove object (Stray) failed for solid_objects!"})
        EXPECT_EQ(logCount("SceneGraph::updateActive(): " + std::string(list)), 2) << list;

    std::array<char, 32> address{};
    std::snprintf(address.data(), address.size(), "%p", static_cast<void *>(stray.get()));
    stray.reset();
    EXPECT_EQ(logCount("SceneGraph::removeObject(): Error removing Object (id 1)! Pointer is " +
                       std::string(address.data()) + "."),
              1);
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
