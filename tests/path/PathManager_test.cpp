#include "selvane/path/PathManager.h"

#include "selvane/core/Config.h"
#include "selvane/core/EventPath.h"
#include "selvane/loop/GameManager.h"
#include "selvane/path/PathFind.h"
#include "selvane/platform/ManualTime.h"
#include "selvane/world/spawn.h"
#include "support/WorldTest.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

namespace sv {
namespace {

using test::Witness;
using Waypoints = std::vector<Vector>;

/// Time stands still unless a test moves it, so that one cycle completes every pending search.
class Paths : public test::WorldTest {
  protected:
    Paths() { EXPECT_EQ(paths.startUp(), 0); }

    ~Paths() override { paths.shutDown(); }

    static Object *put(Vector where, Solidness solidness = HARD) {
        auto *object = spawn<Object>();
        object->setPosition(where);
        object->setSolidness(solidness);
        return object;
    }

    /// An object at (0, y) that enters its events in the diary.
    Witness *putWitness(const std::string &name, float y = 0) {
        auto *witness = spawn<Witness>(name, diary);
        witness->setPosition({0, y});
        return witness;
    }

    Waypoints pathOf(Object *object) {
        paths.cycle(1);
        return object->getPath().waypoints;
    }

    ManualTime time;
    PathManager &paths = PathManager::getInstance();
};

TEST_F(Paths, an_object_walks_around_walls) {
    for (int y = 0; y < 23; ++y)
        put({10, static_cast<float>(y)});
    Object *object = put({5.3F, 3.6F});
    object->setSpeed(1);
    object->setAvoidCollisions(true);
    ASSERT_EQ(object->findPath({20, 3}), 0);
    world.setBoundary({{0, 0}, 15, 15}); // The search keeps to the world that it began in.
    const Waypoints path = pathOf(object);
    ASSERT_FALSE(path.empty());
    EXPECT_EQ(path.front(), (Vector{5, 4}));
    EXPECT_NE(std::find(path.begin(), path.end(), Vector{10, 23}), path.end());
    for (int step = 0; step < 200 && object->getFollowPath(); ++step)
        world.update();
    EXPECT_EQ(object->getPosition(), (Vector{20, 3}));
}

TEST_F(Paths, only_hard_objects_off_the_goal_block) {
    const Waypoints straight{{0, 0}, {1, 0}, {2, 0}};
    const struct {
        Solidness solidness;
        Vector where;
        Waypoints path;
    } cases[] = {
        {HARD, {1, 0}, {}},          {SOFT, {1, 0}, straight}, {SPECTRAL, {1, 0}, straight},
        {HARD, {2.4F, 0}, straight}, {HARD, {2.6F, 0}, {}}, // Reaches into the goal's cell without
                                                            // covering its middle.
    };
    world.setBoundary({{0, 0}, 3, 1});
    for (const auto &c : cases) {
        SCOPED_TRACE(&c - cases);
        Object *obstacle = put(c.where, c.solidness);
        Object *seeker = put({0, 0});
        ASSERT_EQ(seeker->findPath({2, 0}), 0);
        EXPECT_EQ(pathOf(seeker), c.path);
        EXPECT_EQ(seeker->getFollowPath(), !c.path.empty());
        delete seeker;
        delete obstacle;
    }
}

TEST_F(Paths, a_path_ends_where_boxes_touch) {
    Object *prey = put({10, 5});
    prey->setBox({{-2, -1}, 4, 2});
    Object *object = put({3, 5});
    ASSERT_EQ(object->findPath(prey), 0);
    EXPECT_EQ(pathOf(object).back(), (Vector{8, 5}));
    ASSERT_EQ(object->findPath(prey), 0);
    delete prey;
    EXPECT_EQ(pathOf(object).back(), (Vector{10, 5})) << "to where it was";
}

TEST_F(Paths, impossible_searches_are_refused) {
    Object *asking = put({5, 5});
    Object *searching = put({6, 0});
    asking->setId(101);
    searching->setId(102);
    ASSERT_EQ(searching->findPath({1, 0}), 0);
    const Object *outside = put({80, 3});
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const auto expect_refused = [](int answer, const std::string &line) {
        EXPECT_EQ(answer, -1);
        EXPECT_EQ(logLines().back(), "Object::findPath(): Warning! " + line);
    };
    expect_refused(asking->findPath({-0.5F, 3}), "(-0.5, 3) is outside the world.");
    expect_refused(asking->findPath({3, 24}), "(3, 24) is outside the world.");
    expect_refused(asking->findPath({3, nan}), "(3, nan) is outside the world.");
    expect_refused(asking->findPath(outside), "(80, 3) is outside the world.");
    expect_refused(put({80, 4})->findPath({3, 3}), "(80, 4) is outside the world.");
    expect_refused(asking->findPath({5.4F, 5}), "Object 101 stands at (5.4, 5) already.");
    expect_refused(asking->findPath(asking), "Object 101 stands at (5, 5) already.");
    expect_refused(asking->findPath(nullptr), "Object 101 has no target.");
    expect_refused(searching->findPath({2, 2}), "Object 102 is searching already.");
    EXPECT_EQ(pathOf(searching).size(), 6U) << "the first search goes on";
    EXPECT_EQ(asking->findPath({79.9F, 23.9F}), 0);
    EXPECT_EQ(pathOf(asking).back(), (Vector{79, 23}));
}

TEST_F(Paths, searches_fail_in_too_large_worlds) {
    Witness *seeker = putWitness("o");
    std::vector<int> results;
    seeker->on_event = [&](const Event *p_event) {
        results.push_back(eventCast<EventPath>(p_event)->getStatus());
    };
    for (const float side : {5000.0F, 1e30F, std::numeric_limits<float>::infinity()}) {
        world.setBoundary({{0, 0}, side, side});
        ASSERT_EQ(seeker->findPath({3, 3}), 0);
        paths.cycle(1);
    }
    EXPECT_EQ(results, std::vector<int>(3, PATH_NONE));
    EXPECT_EQ(logCount("PathFind::cycleOnce(): node graph not allocated.  Cannot find path."), 3);
}

TEST_F(Paths, objects_without_speed_are_logged_once) {
    Object *still = put({0, 0});
    still->setId(101);
    for (const Vector to : {Vector{3, 0}, Vector{5, 5}}) {
        still->findPath(to);
        paths.cycle(1);
        world.update();
        world.update();
    }
    EXPECT_EQ(still->getPosition(), (Vector{0, 0}));
    EXPECT_EQ(logCount("Object::stepPath(): Warning! Object 101 follows a path with speed 0."), 1);
}

TEST_F(Paths, waypoints_are_taken_within_reach) {
    for (const float x : {0.75F, 0.8F}) {
        Object *walker = put({0, 0}, SPECTRAL);
        walker->setSpeed(1);
        walker->setPath({{{x, 0}, {9, 0}}, 0});
        walker->setFollowPath(true);
        walker->stepPath();
        EXPECT_EQ(walker->getPosition(), (Vector{x == 0.75F ? x : 0, 0}));
    }
}

TEST_F(Paths, a_search_notifies_its_object_once) {
    Witness *object = putWitness("o");
    const Vector there{5, 0};
    const auto pass_on = [&](const Event *p_event) { object->Object::eventHandler(p_event); };
    const auto ask = [&] { EXPECT_EQ(object->findPath(Vector{3, 3}), 0); };
    const struct {
        const char *name;
        std::function<void(const Event *)> react;
        int events; // One more if it asks again.
    } cases[] = {
        {"keeps it to itself", [](const Event *) {}, 1},
        {"passes it on", pass_on, 1},
        {"asks for another", [&](const Event *) { ask(); }, 2},
        {"passes it on and asks", [&](const Event *p_event) { pass_on(p_event), ask(); }, 2},
        {"asks and passes the old one on", [&](const Event *p_event) { ask(), pass_on(p_event); },
         2},
        {"lets the manager go on", [&](const Event *) { paths.cycle(1); }, 1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        int events = 0;
        object->on_event = [&](const Event *p_event) {
            if (events++ == 0)
                c.react(p_event);
        };
        ASSERT_EQ(object->findPath(there), 0);
        paths.cycle(1);
        EXPECT_EQ(events, c.events);
        EXPECT_EQ(object->findPath(there), 0) << "it is free to ask again";
        object->dropPathFind();
        paths.cycle(1);
        EXPECT_EQ(events, c.events) << "it gave up";
    }
}

TEST_F(Paths, a_foreign_path_ends_the_search) {
    Object *object = put({0, 0});
    ASSERT_EQ(object->findPath({5, 0}), 0);
    EXPECT_EQ(pathOf(object).size(), 6U);
    ASSERT_EQ(object->findPath({9, 0}), 0);
    const Waypoints foreign{{0, 1}, {0, 2}};
    const EventPath event(PATH_FOUND, foreign);
    EXPECT_EQ(object->eventHandler(&event), 1);
    EXPECT_EQ(pathOf(object), foreign);
}

TEST_F(Paths, a_games_search_ends_with_its_object) {
    Witness *doomed_object = putWitness("doomed");
    Witness *other_object = putWitness("other", 5);
    PathFind doomed(doomed_object, {5, 0});
    PathFind other(other_object, {5, 5});
    for (PathFind *search : {&doomed, &other, &doomed})
        ASSERT_EQ(paths.add(search), 0);
    other_object->setActive(false); // It gets its path all the same.
    delete doomed_object;
    EXPECT_EQ(paths.remove(&doomed), -1);
    paths.cycle(1);
    EXPECT_EQ(diary, (test::Diary{"doomed: gone", "other: sv-path"}));
}

TEST_F(Paths, handlers_may_delete_objects) {
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
        for (const Witness *object : objects)
            delete object;
    }
}

TEST_F(Paths, searches_share_the_time_of_a_step) {
    const struct {
        int given;
        long long tick_ms; // The time that each event takes.
        std::ptrdiff_t events;
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
        EXPECT_EQ(std::count(diary.begin(), diary.end(), "o: sv-path"), c.events);
        const test::Diary lines = logLines();
        EXPECT_EQ(test::Diary(lines.begin() + before, lines.end()), c.lines);
    }
}

class PathBudget : public test::EngineTest {};

TEST_F(PathBudget, is_the_rest_of_the_step) {
    ManualTime time;
    Config::getInstance().loadConfig("headless:true,frame_time:100,");
    GameManager &game = GameManager::getInstance();
    ASSERT_EQ(game.startUp(), 0);
    WorldManager::getInstance().setBoundary({{0, 0}, 80, 24});
    test::Diary diary;
    for (int i = 0; i < 10; ++i) {
        auto *seeker = spawn<Witness>("o", diary);
        seeker->setPosition({0, static_cast<float>(2 * i)});
        seeker->findPath({1, static_cast<float>(2 * i)});
        seeker->on_event = [&](const Event *) {
            time.now_ms += 20;
            game.setGameOver();
        };
    }
    game.run();
    EXPECT_EQ(std::count(diary.begin(), diary.end(), "o: sv-path"), 5) << "95 of 100 ms";
    game.shutDown();
}

} // namespace
} // namespace sv
