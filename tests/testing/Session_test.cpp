#include "selvane/testing/Session.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/display/ScreenCapture.h"
#include "selvane/input/InputManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/world/spawn.h"
#include "support/EngineTest.h"
#include "support/InputWitness.h"
#include "support/environment.h"

#include <chrono>
#include <cstdlib>
#include <sstream>
#include <thread>

namespace sv {
namespace {

using SessionTest = test::EngineTest;

GameManager &game() {
    return GameManager::getInstance();
}

/// Does not stop the engine, nor mind a closed window.
int runRepeatedly(int times) {
    game().startUp();
    for (int i = 0; i < times; ++i)
        game().run();
    return 0;
}

TEST_F(SessionTest, plays_parts_of_a_game_step_by_step) {
    Session session({.columns = 20, .rows = 4});
    EXPECT_THROW(Session(), std::logic_error) << "one at a time";
    ASSERT_EQ(session.start(), 0);
    EXPECT_EQ(session.screen(), "");
    spawn<Object>();
    auto *witness = spawn<test::InputWitness>();
    EXPECT_EQ(session.objects<test::InputWitness>(), std::vector{witness});
    DisplayManager::getInstance().drawCh({6, 1}, '@', GREEN);
    logLine("seen by %s", "the test");
    session.play();
    EXPECT_EQ(session.colors(), "\n      g");
    EXPECT_EQ(session.exitStatus(), -1);
    session.end();
    EXPECT_EQ(session.exitStatus(), 0);
    EXPECT_EQ(session.screen(), "\n      @") << "the last frame";
    EXPECT_NE(session.log().find("seen by the test\n****"), std::string::npos) << session.log();
    EXPECT_FALSE(session.play());
    EXPECT_THROW(session.tapKey(Keyboard::A), std::logic_error);
}

TEST_F(SessionTest, input_comes_as_from_a_window) {
    using Lines = std::vector<std::string>;
    Session session;
    ASSERT_EQ(session.start(), 0);
    auto *witness = spawn<test::InputWitness>();
    witness->registerInterest(KEYBOARD_EVENT);
    witness->registerInterest(MOUSE_EVENT);
    const auto expect_step = [&](const Lines &expected) {
        session.play();
        EXPECT_EQ(witness->take(), expected);
    };
    session.pressKey(Keyboard::B);
    session.pressKey(Keyboard::B);
    expect_step({"pressed 37", "down 37"});
    expect_step({"down 37"});
    session.releaseKey(Keyboard::B);
    session.releaseKey(Keyboard::B);
    session.tapKey(Keyboard::BACKSPACE);
    expect_step({"released 37", "pressed 72", "released 72"});
    session.click({3.25F, 4}, RIGHT);
    expect_step({"moved -1 at 3.25 4", "clicked 1 at 3.25 4"});
    for (const auto button : {LEFT, MIDDLE, RIGHT, LEFT})
        session.pressButton(button);
    session.moveMouse({-2, 90});
    expect_step({"clicked 0 at 3.25 4", "clicked 2 at 3.25 4", "clicked 1 at 3.25 4",
                 "moved -1 at -2 90", "held 0 at -2 90", "held 1 at -2 90", "held 2 at -2 90"});
    for (const auto button : {LEFT, MIDDLE, RIGHT})
        session.releaseButton(button);
    for (const int key : {163, 71, 61, 24, 22, 0, 6}) // 163 is Delete, which is not polled.
        session.pressKey(static_cast<Keyboard::Key>(key));
    session.play();
    witness->take();
    expect_step({"down 6", "down 0", "down 22", "down 24", "down 61", "down 71", "down 72"});
    Lines last; // The witness goes with the game.
    witness->on_event = [&](const std::string &event) {
        last.push_back(event);
        session.closeWindow();
    };
    EXPECT_FALSE(session.play());
    EXPECT_EQ(last, Lines{"down 6"});
}

TEST_F(SessionTest, every_program_is_ended) {
    const auto throwing = [] {
        runRepeatedly(1);
        throw std::runtime_error("no level");
        return 0;
    };
    const auto expect_errors = [](const std::function<int()> &program, const std::string &errors) {
        EXPECT_EQ(test::errorsOf([&] { Session(program).play(2); }), errors);
    };
    expect_errors([] { return runRepeatedly(100); }, "");
    expect_errors([] { return runRepeatedly(101); },
                  "Session: Warning! The program goes on without a window, and is ended "
                  "by an exception.\n");
    expect_errors(throwing, "Session: Error! The program has thrown: no level\n");
    bool is_begun = false;
    {
        const Session idle([&] { return is_begun = true; });
    }
    EXPECT_FALSE(is_begun);
    Session failing({.config = "window_horizontal_chars:0,"});
    EXPECT_EQ(failing.start(), -1);
    EXPECT_EQ(failing.exitStatus(), 1);
}

TEST_F(SessionTest, a_program_that_hangs_ends_the_process) {
    const auto sleep = [] {
        std::this_thread::sleep_for(std::chrono::hours(1));
        return 0;
    };
    EXPECT_DEATH(Session(sleep, {.patience_s = 1}).start(),
                 "has neither ended nor come for input in time");
    const auto catch_all = [] {
        game().startUp();
        while (true)
            try {
                game().run();
            } catch (...) {
            }
        return 0;
    };
    EXPECT_DEATH(Session(catch_all).start(), "has caught the exception that was to end it");
}

/// All that a session shows of a game that leaves nothing as it was.
std::string wildSession() {
    std::ostringstream all;
    Session session({.columns = 30, .rows = 8, .config = "frame_time:20,", .log_level = 2});
    EXPECT_EQ(session.start(), 0);
    LogManager &log = LogManager::getInstance();
    for (const int type : {TRIANGLE, SQUARE}) { // A square turns the figures of the next frames.
        Shape shape;
        shape.setType(type);
        shape.setSize(300);
        auto *object = spawn<Object>();
        object->setShape(shape);
        object->setPosition({10, 3});
        WorldManager::getInstance().setViewFollowing(object);
        session.play();
        all << object->getId() << '\n' << session.screen() << '\n';
    }
    WorldManager::getInstance().setViewPosition({100, 100});
    DisplayManager::getInstance().setShake(3, 3, 50);
    ResourceManager::getInstance().loadSound("missing.wav", "missing");
    session.play(4);
    all << Config::getInstance().getFrameTime() << ' ' << session.getTime().now_ms << ' '
        << std::rand() % 1000 << ' ' << log.getLogLevel() << '\n';
    log.setLogLevel(9);
    log.setLogStepCount(true);
    Config::getInstance().loadConfig("frame_time:7,window_title:Wild,");
    struct Meddler : Object {
        ~Meddler() override { WorldManager::getInstance().update(); }
    };
    delete spawn<Meddler>();
    WorldManager::getInstance().markForDelete(spawn<Meddler>());
    session.play();
    session.end();
    all << session.screen() << '\n' << session.colors() << '\n' << session.log();
    return all.str();
}

TEST_F(SessionTest, the_hundredth_is_exactly_like_the_first) {
    const auto here = std::filesystem::current_path();
    for (const char *variable : {"TMPDIR", "TMP"})
        test::setEnvironment(variable, here.string());
    prepareLog(3);
    LogManager &log = LogManager::getInstance();
    log.setLogStepCount(true);
    const auto *source = &InputManager::getInstance().getSource();
    std::srand(5);
    test::setEnvironment(LOG_FILE_VARIABLE, "not/this/one.log");
    const std::string first = wildSession();
    const int random = std::rand();
    EXPECT_NE(first.find('#'), std::string::npos) << first;
    for (int round = 1; round < 100; ++round)
        ASSERT_EQ(wildSession(), first) << round;
    std::srand(5);
    { const Session idle; }
    EXPECT_EQ(std::rand(), random);
    EXPECT_EQ(game().getStepCount(), 0);
    EXPECT_EQ(log.getLogLevel(), 3);
    EXPECT_TRUE(log.getLogStepCount());
    EXPECT_EQ(log.startUp(), -1) << "the variable names the file again";
    EXPECT_EQ(&InputManager::getInstance().getSource(), source);
    EXPECT_EQ(Config::getInstance().getFrameTime(), 33);
    EXPECT_FALSE(InputManager::getInstance().isWindowClosed());
    EXPECT_EQ(DisplayManager::getInstance().getHorizontal(), 80);
    EXPECT_EQ(DisplayManager::getInstance().getCapture(), nullptr);
    EXPECT_EQ(&platform::timeSource(), &platform::systemTimeSource());
    EXPECT_EQ(std::filesystem::current_path(), here);
    EXPECT_TRUE(std::filesystem::is_empty(here));
}

TEST_F(SessionTest, runs_where_it_is_told_and_as_configured) {
    std::filesystem::create_directory("game");
    writeFile("game/sv-config.txt", "window_horizontal_chars:50,\nwindow_vertical_chars:40,\n"
                                    "headless:false,\nrandom_seed:9,\nframe_time:50,\n"
                                    "logfile:gone.log,\n");
    const auto randomOf = [](int seed) {
        Session session({.seed = seed, .rows = 10, .folder = "game"});
        EXPECT_EQ(session.start(), 0);
        const WorldManager &world = WorldManager::getInstance();
        EXPECT_EQ(world.getBoundary(), (Box{{0, 0}, 50, 10}));
        EXPECT_EQ(world.getView(), world.getBoundary());
        EXPECT_EQ(world.getViewSlack(), (Vector{0.33333334F, 0.33333334F}));
        session.play(3);
        EXPECT_EQ(session.getTime().now_ms, 150);
        return std::rand();
    };
    EXPECT_EQ(randomOf(1), randomOf(1));
    EXPECT_NE(randomOf(1), randomOf(2));
    EXPECT_FALSE(std::filesystem::exists("game/gone.log"));
    EXPECT_THROW(Session session({.folder = "nowhere"}), std::filesystem::filesystem_error);
}

} // namespace
} // namespace sv
