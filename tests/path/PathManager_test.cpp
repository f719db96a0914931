#include "selvane/path/PathManager.h"

#include "selvane/core/EventPath.h"
#include "selvane/core/LogManager.h"
#include "selvane/path/PathFind.h"
#include "selvane/platform/ManualTime.h"
#include "support/WorldTest.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

namespace sv {
namespace {

using test::Witness;
using Waypoints = std::vector<Vector>;

constexpr char no_graph[] = "PathFind::cycleOnce(): node graph not allocated.  Cannot find path.";

/// Time stands still unless a test moves it: whatever is pending ends in one cycle.
class Paths : public test::WorldTest {
  protected:
    Paths() { EXPECT_EQ(paths.startUp(), 0); }

    ~Paths() override { paths.shutDown(); }

    static Object *put(Vector where, Solidness solidness = HARD) {
        auto *p_o = new Object;
        p_o->setPosition(where);
        p_o->setSolidness(solidness);
        return p_o;
    }

    /// An object at (0, y) that says what reaches it.
    Witness *putWitness(const std::string &name, float y = 0) {
        auto *p_witness = new Witness(name, diary);
        p_witness->setPosition({0, y});
        return p_witness;
    }

    Waypoints pathOf(Object *p_o) {
        paths.cycle(1);
        return p_o->getPath().waypoints;
    }

    ManualTime time;
    PathManager &paths = PathManager::getInstance();
};

TEST_F(Paths, an_object_walks_around_the_walls_to_where_it_asked_to_go) {
    for (int y = 0; y < 23; ++y)
        put({10, static_cast<float>(y)});
    Object *p_o = put({5.3F, 3.6F});
    p_o->setSpeed(1);
    p_o->setAvoidCollisions(true);
    ASSERT_EQ(p_o->findPath({20, 3}), 0);
    world.setBoundary({{0, 0}, 15, 15}); // The search keeps to the world that it began in.
    const Waypoints path = pathOf(p_o);
    ASSERT_FALSE(path.empty());
    EXPECT_EQ(path.front(), (Vector{5, 4}));
    EXPECT_NE(std::find(path.begin(), path.end(), Vector{10, 23}), path.end());
    for (int step = 0; step < 200 && p_o->getFollowPath(); ++step)
        world.update();
    EXPECT_EQ(p_o->getPosition(), (Vector{20, 3}));
}

TEST_F(Paths, only_hard_objects_that_do_not_cover_the_goal_block) {
    const struct {
        Solidness solidness;
        Vector where;
        Waypoints path;
    } cases[] = {
        {HARD, {1, 0}, {}},
        {SOFT, {1, 0}, {{0, 0}, {1, 0}, {2, 0}}},
        {SPECTRAL, {1, 0}, {{0, 0}, {1, 0}, {2, 0}}},
        {HARD, {2.4F, 0}, {{0, 0}, {1, 0}, {2, 0}}},
        {HARD, {2.6F, 0}, {}}, // Reaches into the goal's cell without covering its middle.
    };
    world.setBoundary({{0, 0}, 3, 1});
    for (const auto &c : cases) {
        SCOPED_TRACE(&c - cases);
        Object *p_obstacle = put(c.where, c.solidness);
        Object *p_o = put({0, 0});
        ASSERT_EQ(p_o->findPath({2, 0}), 0);
        EXPECT_EQ(pathOf(p_o), c.path);
        EXPECT_EQ(p_o->getFollowPath(), !c.path.empty());
        delete p_o;
        delete p_obstacle;
    }
}

TEST_F(Paths, a_path_to_an_object_ends_where_the_boxes_touch) {
    Object *p_prey = put({10, 5});
    p_prey->setBox({{-2, -1}, 4, 2});
    Object *p_o = put({3, 5});
    ASSERT_EQ(p_o->findPath(p_prey), 0);
    EXPECT_EQ(pathOf(p_o).back(), (Vector{8, 5}));
    ASSERT_EQ(p_o->findPath(p_prey), 0);
    delete p_prey;
    EXPECT_EQ(pathOf(p_o).back(), (Vector{10, 5})) << "to where it was";
}

TEST_F(Paths, a_search_that_makes_no_sense_is_refused_with_one_line) {
    Object *p_o = put({5, 5});
    Object *p_searching = put({6, 0});
    p_o->setId(101);
    p_searching->setId(102);
    ASSERT_EQ(p_searching->findPath({1, 0}), 0);
    Object *p_outside = put({80, 3});
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    const struct {
        std::function<int()> ask;
        std::string line;
        int level = 0;
    } cases[] = {
        {[&] {
             return p_o->findPath({-0.5F, 3});
         },
         "(-0.5, 3) is outside the world."},
        {[&] {
             return p_o->findPath({3, 24});
         },
         "(3, 24) is outside the world."},
        {[&] {
             return p_o->findPath({inf, 3});
         },
         "(inf, 3) is outside the world."},
        {[&] {
             return p_o->findPath({3, nan});
         },
         "(3, nan) is outside the world."},
        {[&] {
             return p_outside->findPath({3, 3});
         },
         "(80, 3) is outside the world."},
        {[&] { return p_o->findPath(p_outside); }, "(80, 3) is outside the world."},
        {[&] {
             return p_o->findPath({5.4F, 5});
         },
         "Object 101 stands at (5.4, 5) already.", 5},
        {[&] { return p_o->findPath(p_o); }, "Object 101 stands at (5, 5) already.", 5},
        {[&] { return p_o->findPath(nullptr); }, "Object 101 has no target."},
        {[&] {
             return p_searching->findPath({2, 2});
         },
         "Object 102 is searching already.", 5},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.line);
        for (const int log_level : {4, 5}) {
            LogManager::getInstance().setLogLevel(log_level);
            said();
            EXPECT_EQ(c.ask(), -1);
            EXPECT_EQ(said(),
                      c.level > log_level ? "" : "Object::findPath(): Warning! " + c.line + "\n");
        }
    }
    EXPECT_EQ(pathOf(p_searching).size(), 6U) << "the first search goes on";
    EXPECT_EQ(p_o->findPath({79.9F, 23.9F}), 0);
    EXPECT_EQ(pathOf(p_o).back(), (Vector{79, 23}));
}

TEST_F(Paths, in_a_world_that_is_too_large_no_path_is_found) {
    const float inf = std::numeric_limits<float>::infinity();
    for (const float side : {5000.0F, 1e30F, inf}) {
        SCOPED_TRACE(side);
        world.setBoundary({{0, 0}, side, side});
        Witness *p_o = putWitness("o");
        int status = -1;
        p_o->on_event = [&](const Event *p_event) {
            status = dynamic_cast<const EventPath *>(p_event)->getStatus();
        };
        const int said = logCount(no_graph);
        ASSERT_EQ(p_o->findPath({3, 3}), 0);
        paths.cycle(1);
        EXPECT_EQ(status, PATH_NONE);
        EXPECT_EQ(logCount(no_graph), said + 1);
    }
}

TEST_F(Paths, an_object_without_speed_on_a_path_is_said_once) {
    Object *p_o = put({0, 0});
    p_o->setId(101);
    for (const Vector to : {Vector{3, 0}, Vector{5, 5}}) {
        p_o->findPath(to);
        paths.cycle(1);
        world.update();
        world.update();
    }
    EXPECT_EQ(p_o->getPosition(), (Vector{0, 0}));
    EXPECT_EQ(logCount("Object::stepPath(): Warning! Object 101 follows a path with speed 0."), 1);
}

TEST_F(Paths, a_search_is_told_once_whatever_its_object_does_then) {
    Witness *p_o = putWitness("o");
    const Vector there{5, 0};
    const struct {
        const char *name;
        std::function<void(const Event *)> react;
        int told; // Asking again, it is told of that too.
    } cases[] = {
        {"keeps it to itself", [](const Event *) {}, 1},
        {"passes it on", [&](const Event *p_event) { p_o->Object::eventHandler(p_event); }, 1},
        {"asks for another",
         [&](const Event *) {
             EXPECT_EQ(p_o->findPath({3, 3}), 0);
         },
         2},
        {"passes it on and asks for another",
         [&](const Event *p_event) {
             p_o->Object::eventHandler(p_event);
             EXPECT_EQ(p_o->findPath({3, 3}), 0);
         },
         2},
        {"asks for another and passes the old one on",
         [&](const Event *p_event) {
             EXPECT_EQ(p_o->findPath({3, 3}), 0);
             p_o->Object::eventHandler(p_event);
         },
         2},
        {"lets the manager go on", [&](const Event *) { paths.cycle(1); }, 1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        int told = 0;
        p_o->on_event = [&](const Event *p_event) {
            if (told++ == 0)
                c.react(p_event);
        };
        ASSERT_EQ(p_o->findPath(there), 0);
        paths.cycle(1);
        EXPECT_EQ(told, c.told);
        EXPECT_EQ(p_o->findPath(there), 0) << "it is free to ask again";
        p_o->dropPathFind();
        paths.cycle(1);
        EXPECT_EQ(told, c.told) << "it gave up";
    }
}

TEST_F(Paths, a_path_that_comes_from_elsewhere_ends_the_search) {
    Object *p_o = put({0, 0});
    ASSERT_EQ(p_o->findPath({5, 0}), 0);
    const Waypoints other{{0, 1}, {0, 2}};
    const EventPath event(PATH_FOUND, other);
    EXPECT_EQ(p_o->eventHandler(&event), 1);
    EXPECT_EQ(pathOf(p_o), other);
}

TEST_F(Paths, an_inactive_object_is_told_of_its_path) {
    Witness *p_o = putWitness("o");
    ASSERT_EQ(p_o->findPath({5, 0}), 0);
    p_o->setActive(false);
    paths.cycle(1);
    EXPECT_EQ(diary, test::Diary{"o: sv-path"});
}

TEST_F(Paths, a_search_that_a_game_made_itself_ends_with_its_object) {
    Witness *p_doomed = putWitness("doomed");
    Witness *p_other = putWitness("other", 5);
    PathFind doomed(p_doomed, {5, 0});
    PathFind other(p_other, {5, 5});
    for (PathFind *p_search : {&doomed, &other, &doomed})
        ASSERT_EQ(paths.add(p_search), 0);
    delete p_doomed;
    EXPECT_EQ(paths.remove(&doomed), -1);
    paths.cycle(1);
    EXPECT_EQ(diary, (test::Diary{"doomed: gone", "other: sv-path"}));
}

TEST_F(Paths, a_handler_may_delete_any_object_and_the_others_keep_their_turn) {
    for (const int doomed : {0, 1, 2}) {
        SCOPED_TRACE(doomed);
        diary.clear();
        std::vector<Witness *> objects;
        for (int i = 0; i < 4; ++i) {
            objects.push_back(putWitness(std::to_string(i), static_cast<float>(4 * i)));
            objects.back()->findPath({1, static_cast<float>(4 * i)});
        }
        objects[1]->on_event = [&objects, doomed](const Event *) {
            delete std::exchange(objects[static_cast<std::size_t>(doomed)], nullptr);
        };
        paths.cycle(1);
        test::Diary expected{"0: sv-path", "1: sv-path", std::to_string(doomed) + ": gone"};
        for (const int other : {2, 3})
            if (other != doomed)
                expected.push_back(std::to_string(other) + ": sv-path");
        EXPECT_EQ(diary, expected);
        for (const Witness *p_o : objects)
            delete p_o;
    }
}

TEST_F(Paths, the_searches_share_the_time_of_a_step_and_no_more) {
    const struct {
        int given;
        long long tick_ms; // The time that each end of a search takes.
        std::ptrdiff_t told;
        test::Diary lines;
    } cases[] = {
        {7, 1, 8, {"PathManager::cycle(): cycle time 7 exceeded."}},
        {-50, 1, 4, {"PathManager::cycle(): cycle time 3 exceeded."}}, // A tenth of 33 ms.
        {7, -5, 1, {}},                                                // A clock set back.
        {7, 0, 10, {}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(&c - cases);
        diary.clear();
        time.now_ms = 1000;
        std::vector<std::unique_ptr<Witness>> objects;
        for (int i = 0; i < 10; ++i) {
            objects.emplace_back(putWitness("o", static_cast<float>(2 * i)));
            objects.back()->findPath({1, static_cast<float>(2 * i)});
            objects.back()->on_event = [&](const Event *) { time.now_ms += c.tick_ms; };
        }
        const auto before = static_cast<std::ptrdiff_t>(logLines().size());
        paths.cycle(c.given);
        EXPECT_EQ(std::count(diary.begin(), diary.end(), "o: sv-path"), c.told);
        const test::Diary lines = logLines();
        EXPECT_EQ(test::Diary(lines.begin() + before, lines.end()), c.lines);
    }
}

} // namespace
} // namespace sv
