// Mistakes of a game's author: each is logged, and the game goes on.

#include "selvane/core/EventCollision.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/platform/ManualTime.h"
#include "selvane/splash/Splash.h"
#include "selvane/world/ViewObject.h"
#include "selvane/world/WorldManager.h"
#include "support/EngineTest.h"

#include <deque>
#include <functional>
#include <limits>
#include <memory>

namespace sv {
namespace {

constexpr char DRAWN[] = "drawn";
constexpr char GONE[] = "gone";

GameManager &game() {
    return GameManager::getInstance();
}
WorldManager &world() {
    return WorldManager::getInstance();
}

/// Does one thing at one moment: at an event of that type, when drawn, or when it is destroyed.
class Actor : public Object {
  public:
    Actor(std::string new_moment, std::function<void(Actor *)> new_action)
        : moment(std::move(new_moment)), action(std::move(new_action)) {
        setSolidness(moment == COLLISION_EVENT ? SOFT : SPECTRAL);
        if (moment == STEP_EVENT || moment == "boom")
            registerInterest(moment);
        if (moment == OUT_EVENT)
            setVelocity({-100, 0});
    }
    ~Actor() override { act(GONE); }
    int eventHandler(const Event *p_event) override {
        act(p_event->getType());
        return 1;
    }
    int draw() override {
        act(DRAWN);
        return 0;
    }

  private:
    // Nothing of this object after the action: it may be gone.
    void act(const std::string &now) {
        const auto copy = action;
        if (now == moment)
            copy(this);
    }

    std::string moment;
    std::function<void(Actor *)> action;
};

struct Mistakes : test::EngineTest, testing::WithParamInterface<std::string> {
    Mistakes() {
        writeFile("sv-config.txt", "headless:true,");
        prepareLog();
        EXPECT_EQ(game().startUp(), 0);
        said();
    }
    ~Mistakes() override { game().shutDown(); }

    /// Runs two steps of the game.
    static void play() {
        int left = 2;
        const Actor counter(STEP_EVENT, [&](Actor *) { game().setGameOver(--left <= 0); });
        game().run();
    }

    /// Acts at the moment that the parameter names, and plays on.
    static void playWith(const std::function<void(Actor *)> &action) {
        auto *p_actor = new Actor(GetParam(), action);
        if (GetParam() == COLLISION_EVENT) {
            auto *p_mover = new Object; // Starts where the actor is, and stays in touch.
            p_mover->setSolidness(SOFT);
            p_mover->setVelocity({0.1F, 0});
        }
        if (GetParam() == GONE)
            world().markForDelete(p_actor);
        play();
    }

    static bool isLogged(const std::string &text) {
        return logText().find(text) != std::string::npos;
    }

    /// How many lines the log has besides those of the start and the end of a run.
    static std::size_t warnings() { return logLines().size() - 4; }

    ManualTime time;
};

using AtEachMoment = Mistakes;
INSTANTIATE_TEST_SUITE_P(Moments, AtEachMoment,
                         testing::Values(STEP_EVENT, COLLISION_EVENT, OUT_EVENT, DRAWN, GONE));

TEST_P(AtEachMoment, shut_down_waits_for_the_step) {
    playWith([](Actor *) { game().shutDown(); });
    EXPECT_FALSE(game().isStarted());
    EXPECT_FALSE(DisplayManager::getInstance().isStarted());
    EXPECT_TRUE(isLogged("** Game engine stopped **"));
    EXPECT_EQ(test::errorsOf([] { game().shutDown(); }), "");
    EXPECT_EQ(game().startUp(), 0);
}

TEST_P(AtEachMoment, nested_steps_are_refused) {
    bool done = false;
    playWith([&](Actor *) {
        world().update();
        world().draw();
        world().deleteMarked();
        world().shutDown();
        game().run();
        if (std::exchange(done, true))
            return;
        EXPECT_EQ(splash(), -1);
    });
    for (const std::string call :
         {"WorldManager::update", "WorldManager::draw", "WorldManager::deleteMarked",
          "WorldManager::shutDown", "GameManager::run", "splash"})
        EXPECT_TRUE(isLogged(call + "(): Error! Called from a handler, draw() or destructor of an "
                                    "object. Ignored. "))
            << call;
    EXPECT_EQ(warnings(), 6U) << "each once, in two steps\n" << logText();
}

TEST_P(AtEachMoment, deleting_by_hand_survives) {
    Object *p_next = nullptr;
    playWith([&](Actor *) { delete std::exchange(p_next, nullptr); });
    playWith([&](Actor *p_me) {
        p_next = new Actor(GetParam(), [](Actor *) {}); // For the one before to delete.
        if (GetParam() != GONE)
            delete p_me;
    });
    play();
    const bool is_mistake = GetParam() != GONE; // A destructor may delete.
    EXPECT_EQ(warnings(), is_mistake ? 1U : 0U) << logText();
    EXPECT_EQ(
        isLogged("in the middle of a step. Objects are deleted by WorldManager::markForDelete()."),
        is_mistake);
}

using Mistake = Mistakes;

TEST_F(Mistake, dead_objects_are_refused) {
    auto *p_dead = new Object;
    auto *p_alive = new Object;
    EXPECT_EQ(game().registerInterest(p_dead, STEP_EVENT), 0) << "unknown to the object";
    EXPECT_EQ(world().insertObject(p_dead), 0) << "a second time";
    delete p_dead;
    EXPECT_EQ(game().unregisterInterest(p_dead, STEP_EVENT), -1);
    EXPECT_EQ(world().getAllObjects(true).getCount(), 1);
    EXPECT_EQ(world().markForDelete(p_dead), -1);
    EXPECT_EQ(world().moveObject(p_dead, {3, 3}), -1);
    EXPECT_EQ(world().insertObject(p_dead), -1);
    EXPECT_EQ(world().removeObject(nullptr), -1);
    EXPECT_EQ(world().setViewFollowing(p_dead), -1);
    EXPECT_EQ(world().registerInterest(p_dead, "boom"), -1);
    EXPECT_EQ(p_alive->findPath(p_dead), -1);
    EXPECT_EQ(world().onEvent(nullptr), 0);
    EXPECT_TRUE(world().getCollisions(nullptr, {}).isEmpty());
    play();
    EXPECT_EQ(warnings(), 9U) << logText();
}

TEST_F(Mistake, endless_recursion_ends) {
    const auto push = [](Actor *p_me) { world().moveObject(p_me, p_me->getPosition()); };
    Actor *p_last = nullptr;
    int calls_of_last = 0;
    const auto boom = [&](Actor *p_me) {
        if (p_me && p_me == p_last)
            ++calls_of_last;
        Event event;
        event.setType("boom");
        world().onEvent(&event);
    };
    // Two of each: with both calling on, 2^500 calls would be under way.
    for (int i = 0; i < 2; ++i) {
        p_last = new Actor("boom", boom);
        new Actor(COLLISION_EVENT, push);
    }
    play();
    for (Object *p_o : world().getAllObjects())
        p_o->setVelocity({0.1F, 0});
    play();
    boom(nullptr);
    EXPECT_EQ(calls_of_last, 1) << "only the outermost event goes on";
    EXPECT_TRUE(isLogged("moveObject(): Error! 500 moves are under way"));
    EXPECT_TRUE(isLogged("onEvent(): Error! 500 events are under way"));
    EXPECT_EQ(warnings(), 2U) << logText();
}

TEST_F(Mistake, a_setPosition_that_moves_ends) {
    struct Runner : Object {
        int setPosition(Vector v) override { return world().moveObject(this, v); }
    };
    auto *p_runner = new Runner;
    p_runner->setVelocity({1, 0});
    play();
    EXPECT_EQ(p_runner->getPosition(), (Vector{1, 1}));
}

/// Counts those that live.
struct Counted : Object {
    Counted() { ++count; }
    ~Counted() override { --count; }
    static int count;
};
int Counted::count = 0;

TEST_F(Mistake, only_objects_made_by_new_are_deleted) {
    struct Ship : Counted {
        explicit Ship(const Object * /*turret*/ = nullptr) {}
        Counted radar;
    };
    struct alignas(64) Tank : Counted {};
    struct Wreck : Counted {
        Wreck() { throw 1; }
    };
    const Ship stack;
    const std::deque<Counted> deque(3);
    const auto shared = std::make_shared<Counted>();
    alignas(Counted) std::byte room[sizeof(Counted)];
    auto *p_placed = new (room) Counted;
    const int not_by_new = Counted::count;
    EXPECT_EQ(not_by_new, 2 + 3 + 1 + 1);
    EXPECT_THROW(new Wreck, int);
    new Ship(new Ship);
    new (std::nothrow) Counted;
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(new Tank) % 64, 0U);
    EXPECT_EQ(Counted::count, not_by_new + 4 + 1 + 1);
    shared->registerInterest("boom");
    world().markForDelete(shared.get());
    play();
    Event boom;
    boom.setType("boom");
    EXPECT_EQ(world().onEvent(&boom), 0) << "no more events either";
    game().shutDown();
    EXPECT_EQ(Counted::count, not_by_new);
    const std::string warning =
        "was not made by Object's new, so it is not deleted but taken out of the world.";
    EXPECT_TRUE(isLogged(warning));
    EXPECT_EQ(logText().find(warning), logText().rfind(warning)) << "once";
    ASSERT_EQ(game().startUp(), 0);
    shared->setVelocity({1, 0});
    play();
    EXPECT_EQ(shared->getPosition(), (Vector{1, 1})) << "it is back in the world";
    p_placed->~Counted();
    EXPECT_FALSE(isLogged("Error removing"));
}

TEST_F(Mistake, refused_objects_stay_out) {
    game().shutDown();
    Counted early;
    prepareLog();
    ASSERT_EQ(game().startUp(), 0);
    EXPECT_TRUE(isLogged("Object 1 was made while the engine was not started"));
    const std::string change = "box-corner-x:0,box-corner-y:0,box-horizontal:3,box-vertical:3,"
                               "type:Early,altitude:3,x_direction:1,y_direction:0,speed:1,";
    for (const std::string active : {"is_active:false,", "is_active:true,"})
        early.deserialize(active + change);
    EXPECT_EQ(early.serialize("BOX,TYPE,ALTITUDE,DIRECTION,SPEED,"), change);
    play();
    EXPECT_EQ(early.getPosition(), (Vector{1, 1}));
    EXPECT_TRUE(world().objectsOfType("Early").isEmpty());
    EXPECT_EQ(world().insertObject(&early), 0) << "unless the game brings it in";
    play();
    EXPECT_EQ(early.getPosition(), (Vector{3, 1}));
}

TEST_F(Mistake, destructors_may_make_objects) {
    struct Saucer : Counted {
        ~Saucer() override { (new Counted)->setBox({{0, 0}, 9, 9}); }
    };
    struct Spark : Counted {
        explicit Spark(int new_number) : number(new_number) { world().markForDelete(this); }
        ~Spark() override {
            if (number < 100)
                new Spark(number + 1);
        }
        int number;
    };
    new Saucer;
    new Spark(0);
    play();
    EXPECT_EQ(world().getAllObjects().getCount(), 2) << "the saucer, and a spark for each step";
    game().shutDown();
    EXPECT_EQ(Counted::count, 2) << "those that the stopped world has refused";
    EXPECT_LE(warnings(), 2U) << logText();
}

TEST_F(Mistake, infinite_numbers_are_refused) {
    auto *p_o = new ViewObject;
    p_o->setLocation(BOTTOM_LEFT);
    const std::string before = p_o->serialize("ALL");
    constexpr float infinite = std::numeric_limits<float>::infinity();
    for (const float bad : {std::numeric_limits<float>::quiet_NaN(), infinite, -infinite}) {
        EXPECT_EQ(p_o->setPosition({bad, 1}), -1);
        EXPECT_EQ(world().moveObject(p_o, {1, bad}), -1);
        p_o->setVelocity({bad, 0});
        p_o->setSpeed(bad);
        p_o->setDirection({0, bad});
        p_o->setAcceleration({bad, bad});
        p_o->setPath({{{1, 1}, {bad, 2}}, 0});
    }
    EXPECT_EQ(p_o->serialize("ALL"), before);
    const Vector position = p_o->getPosition();
    p_o->setDirection({2, 0});
    p_o->setSpeed(3e38F);
    play();
    EXPECT_EQ(p_o->getPosition(), position);
    EXPECT_TRUE(isLogged("Object: Warning! Object 1: position ("));
    EXPECT_EQ(warnings(), 1U) << logText();
}

TEST_F(Mistake, a_failed_start_can_be_repeated) {
    game().shutDown();
    for (const bool fails : {true, false}) {
        writeFile("sv-config.txt",
                  std::string("headless:true,window_horizontal_chars:") + (fails ? "0" : "80"));
        EXPECT_EQ(game().startUp(), fails ? -1 : 0);
        play();
        EXPECT_EQ(isLogged("GameManager::run(): Error! The engine is not started. Does startUp() "
                           "return 0?"),
                  fails);
    }
}

} // namespace
} // namespace sv
