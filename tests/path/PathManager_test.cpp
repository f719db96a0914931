#include "selvane/path/PathManager.h"

#include "selvane/core/EventPath.h"
#include "selvane/path/PathFind.h"
#include "selvane/world/spawn.h"
#include "support/SessionTest.h"
#include "support/WorldTest.h"

#include <algorithm>
#include <limits>

namespace sv {
namespace {

using test::Witness;
using Waypoints = std::vector<Vector>;

/// Time stands still unless a test moves it, so that one cycle completes every pending search.
struct Paths : test::SessionTest {
    explicit Paths(const char *config = "frame_time:100,") : SessionTest(config) {}
    ~Paths() override { session.end(); } // While there is still the diary.

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

    /// Ten objects that search for the cell beside theirs, and take that long to hear of it.
    void putSeekers(int ms) {
        for (float y = 0; y < 20; y += 2) {
            Witness *seeker = putWitness("o", y);
            EXPECT_EQ(seeker->findPath({1, y}), 0);
            seeker->on_event = [this, ms](const Event *) { session.getTime().now_ms += ms; };
        }
    }

    void removeWitnesses() {
        for (const Witness *witness : Session::objects<Witness>())
            delete witness;
        diary.clear();
    }

    Waypoints pathOf(Object *object) {
        paths.cycle(1);
        return object->getPath().waypoints;
    }

    WorldManager &world = WorldManager::getInstance();
    PathManager &paths = PathManager::getInstance();
    test::Diary diary;
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
    const auto expect_refused = [&](int answer, const std::string &line) {
        EXPECT_EQ(answer, -1);
        EXPECT_EQ(lastLine(), "Object::findPath(): Warning! " + line);
    };
    expect_refused(asking->findPath({-0.5F, 3}), "(-0.5, 3) is outside the world.");
    expect_refused(asking->findPath({3, 24}), "(3, 24) is outside the world.");
    expect_refused(asking->findPath({3, nan}), "(3, nan) is outside the world.");
    expect_refused(asking->findPath(outside), "(80, 3) is outside the world.");
    expect_refused(put({4, -1})->findPath({3, 3}), "(4, -1) is outside the world.");
    expect_refused(asking->findPath({5.4F, 5}), "Object 101 stands at (5.4, 5) already.");
    expect_refused(asking->findPath(nullptr), "Object 101 has no target.");
    expect_refused(searching->findPath({2, 2}), "Object 102 is searching already.");
    EXPECT_EQ(pathOf(searching).size(), 6U) << "the first search goes on";
    EXPECT_EQ(asking->findPath({79.9F, 23.9F}), 0);
    EXPECT_EQ(pathOf(asking).back(), (Vector{79, 23}));
}

TEST_F(Paths, searches_fail_in_too_large_worlds) {
    Object *seeker = put({0, 0});
    for (const float side : {5000.0F, 1e30F, std::numeric_limits<float>::infinity()}) {
        world.setBoundary({{0, 0}, side, side});
        ASSERT_EQ(seeker->findPath({3, 3}), 0);
        EXPECT_EQ(pathOf(seeker), Waypoints());
        EXPECT_FALSE(seeker->getFollowPath());
    }
    EXPECT_EQ(logCount("PathFind::cycleOnce(): node graph not allocated.  Cannot find path.\n"), 3);
}

TEST_F(Paths, objects_without_speed_are_logged_once) {
    Object *still = put({0, 0});
    still->setId(101);
    for (const Vector to : {Vector{3, 0}, Vector{5, 5}}) {
        still->findPath(to);
        session.play(3);
    }
    EXPECT_EQ(logCount("Object::stepPath(): Warning! Object 101 follows a path with speed 0.\n"),
              1);
}

TEST_F(Paths, a_search_notifies_its_object_once) {
    Witness *object = putWitness("o");
    // What it does with its first event: p passes it on, a asks anew, g lets the searches go on.
    const std::pair<std::string, int> cases[] = {{"", 1},  {"p", 1},  {"g", 1},
                                                 {"a", 2}, {"pa", 2}, {"ap", 2}};
    for (const auto &[actions, expected] : cases) {
        SCOPED_TRACE(actions);
        int events = 0;
        object->on_event = [&, &first_actions = actions](const Event *p_event) {
            for (const char action : events++ == 0 ? first_actions : "") {
                if (action == 'p')
                    object->Object::eventHandler(p_event);
                else if (action == 'a')
                    EXPECT_EQ(object->findPath(Vector{3, 3}), 0);
                else
                    paths.cycle(1);
            }
        };
        ASSERT_EQ(object->findPath(Vector{5, 0}), 0);
        paths.cycle(1);
        EXPECT_EQ(events, expected);
        EXPECT_EQ(object->findPath(Vector{5, 0}), 0) << "it is free to ask again";
        object->dropPathFind();
        paths.cycle(1);
        EXPECT_EQ(events, expected) << "it gave up";
    }
}

TEST_F(Paths, a_foreign_path_ends_the_search) {
    Object *object = put({0, 0});
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
    const struct {
        std::size_t doomed;
        test::Diary events;
    } cases[] = {
        {0, {"0: sv-path", "1: sv-path", "0: gone", "2: sv-path", "3: sv-path"}},
        {1, {"0: sv-path", "1: sv-path", "1: gone", "2: sv-path", "3: sv-path"}},
        {2, {"0: sv-path", "1: sv-path", "2: gone", "3: sv-path"}},
    };
    for (const auto &c : cases) {
        std::vector<Witness *> objects;
        for (int i = 0; i < 4; ++i) {
            objects.push_back(putWitness(std::to_string(i), static_cast<float>(4 * i)));
            objects.back()->findPath({1, static_cast<float>(4 * i)});
        }
        objects[1]->on_event = [&](const Event *) { delete objects[c.doomed]; };
        paths.cycle(1);
        EXPECT_EQ(diary, c.events);
        removeWitnesses();
    }
}

TEST_F(Paths, searches_share_the_time_of_a_step) {
    const struct {
        int given, answer_ms;
        std::size_t answers;
        int exceeded;
    } cases[] = {
        {20, 5, 5, 20},
        {-50, 5, 3, 10}, // A tenth of the frame time.
        {20, -5, 1, 0},  // A clock set back.
        {20, 0, 10, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(&c - cases);
        session.getTime().now_ms = 1000;
        putSeekers(c.answer_ms);
        paths.cycle(c.given);
        EXPECT_EQ(diary, test::Diary(c.answers, "o: sv-path"));
        EXPECT_EQ(logCount("PathManager::cycle(): cycle time " + std::to_string(c.exceeded) +
                           " exceeded.\n"),
                  c.exceeded > 0);
        removeWitnesses();
    }
    EXPECT_EQ(logCount("exceeded."), 2);
}

TEST_F(Paths, searches_get_the_rest_of_a_step) {
    putSeekers(20);
    session.play();
    EXPECT_EQ(std::count(diary.begin(), diary.end(), "o: sv-path"), 5) << "95 of 100 ms";
}

struct HurriedPaths : Paths {
    HurriedPaths() : Paths("frame_time:1,") {}
};

TEST_F(HurriedPaths, are_found_without_time_for_them) {
    putSeekers(5);
    session.play(2);
    EXPECT_EQ(std::ranges::count(diary, "o: sv-path"), 10) << "each has its turn in each step";
}

} // namespace
} // namespace sv
