#include "selvane/loop/GameManager.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/input/InputManager.h"
#include "selvane/network/NetworkManager.h"
#include "selvane/path/PathManager.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/testing/Session.h"
#include "selvane/world/spawn.h"
#include "support/EngineTest.h"
#include "support/environment.h"

#include <cstdlib>
#include <ctime>
#include <regex>
#include <sstream>

namespace sv {
namespace {

GameManager &game() {
    return GameManager::getInstance();
}

/// The lines of a text that match, each with its line end.
std::string linesLike(const std::string &pattern, const std::string &text) {
    std::istringstream lines(text);
    std::string found;
    for (std::string line; std::getline(lines, line);)
        found += std::regex_match(line, std::regex(pattern)) ? line + "\n" : "";
    return found;
}

const std::string stars = std::string(52, '*') + "\n";

/// Starts and stops, for which no session is needed.
class GameStart : public test::EngineTest {
  protected:
    void TearDown() override {
        if (game().isStarted())
            game().shutDown();
    }

    int start(int log_level = 0, const std::string &config = "") {
        writeFile("sv-config.txt", "headless:true,\n" + config);
        prepareLog(log_level);
        return game().startUp();
    }
};

using GameLoop = test::EngineTest;

TEST_F(GameLoop, numbers_the_steps_of_each_run) {
    const auto run_twice = [] {
        LogManager &log = LogManager::getInstance();
        log.setLogTimeString(true);
        log.setLogStepCount(true);
        game().startUp();
        game().setGameOver(); // Of no consequence: a run begins with a game that is not over.
        game().run();
        logLine("after");
        game().run();
        game().shutDown();
        return 0;
    };
    Session session(run_twice);
    session.play(11);
    EXPECT_EQ(game().getStepCount(), 11);
    game().setGameOver();
    EXPECT_EQ(session.getTime().sleeps.size(), 11U);
    session.play(3);
    EXPECT_EQ(session.getTime().sleeps, std::vector<int>(14, 33)) << "the last step was whole";
    session.end();
    EXPECT_EQ(session.log(), "07:08:09    0 " + stars +
                                 "07:08:09    0 ** Selvane version 4.18 **\n"
                                 "07:08:09    0 ** Game engine started **\n"
                                 "07:08:09    0 " +
                                 stars +
                                 "07:08:09   12 after\n"
                                 "07:08:09    3 " +
                                 stars + "07:08:09    3 ** Game engine stopped **\n");
}

TEST_F(GameLoop, starts_managers_in_order_and_stops_them_reversed) {
    Session session({.config = "frame_time:40,networking:true,", .log_level = 5});
    ASSERT_EQ(session.start(), 0);
    EXPECT_FALSE(game().getGameOver());
    EXPECT_EQ(session.getTime().open_timer_periods, 1);
    session.closeWindow();
    EXPECT_FALSE(session.play());
    EXPECT_TRUE(game().getGameOver());
    EXPECT_EQ(session.getTime().open_timer_periods, 0);
    EXPECT_EQ(linesLike("Game.*|Error.*|\\w+ [Mm]anager (started\\.|stopped)", session.log()),
              "Log Manager started.\nGameManager::startUp(): frame time is 40\n"
              "Display manager started.\nInput manager started.\n"
              "Network manager started.\nResource manager started.\n"
              "World manager started.\nPath manager started.\n"
              "GameManager successfully started.\n"
              "GameManager::run(): starting game loop\n"
              "GameManager::run(): end of game loop\n"
              "Path manager stopped\nWorld manager stopped\n"
              "Resource manager stopped\nNetwork manager stopped\n"
              "Input manager stopped\nDisplay manager stopped\n");
    EXPECT_TRUE(session.log().ends_with("LogManager::shutDown(): successfully stopped.\n"));
}

/// Asks for the same path again and again, and takes 5 ms of every answer.
class Seeker : public Object {
  public:
    Seeker(float new_y, Session &new_session, std::vector<int> &new_steps)
        : y(new_y), session(new_session), steps(new_steps) {
        setPosition({0, y});
        findPath({1, y});
    }

    int eventHandler(const Event * /*p_event*/) override {
        steps.push_back(game().getStepCount());
        session.getTime().now_ms += 5;
        return findPath({1, y});
    }

  private:
    float y;
    Session &session;
    std::vector<int> &steps;
};

TEST_F(GameLoop, finds_paths_without_time_for_them) {
    for (const char *config : {"frame_time:0,", "frame_time:1,", "frame_time:-20,"}) {
        std::vector<int> steps;
        Session session({.config = config});
        ASSERT_EQ(session.start(), 0);
        for (const float y : {0.0F, 3.0F, 6.0F})
            spawn<Seeker>(y, session, steps);
        for (int step = 0; step < 5; ++step) {
            session.getTime().now_ms += 2;
            session.play();
        }
        EXPECT_EQ(steps, (std::vector<int>{1, 1, 1, 3, 3, 3})) << config;
    }
}

TEST_F(GameStart, prints_configuration_and_working_directory) {
    const std::filesystem::path here = std::filesystem::current_path();
    const std::filesystem::path deep = here / std::string(200, 'x') / std::string(100, 'y');
    std::filesystem::create_directories(deep);
    for (const std::string &line : {here.string(), std::string("(full path too long)")}) {
        ASSERT_EQ(start(1), 0);
        EXPECT_NE(logText().find("---\nWorking directory:\n  " + line + "\nLog Manager started.\n"),
                  std::string::npos)
            << logText();
        EXPECT_EQ(linesLike("Network manager.*", logText()), "") << "only if configured";
        game().shutDown();
        std::filesystem::current_path(deep);
    }
}

TEST_F(GameStart, refuses_a_second_start) {
    ASSERT_EQ(start(), 0);
    writeFile("sv-config.txt", "frame_time:50,");
    said();
    EXPECT_EQ(game().startUp(), -1);
    EXPECT_EQ(said(), "GameManager::startup(): Warning! GameManager already started.\n");
    EXPECT_TRUE(game().isStarted());
    EXPECT_EQ(Config::getInstance().getFrameTime(), 33);
}

TEST_F(GameStart, fails_without_a_log_file) {
    test::setEnvironment(LOG_FILE_VARIABLE, "missing/x.log");
    test::CapturedErrors errors;
    EXPECT_EQ(start(), -1);
    game().shutDown();
    EXPECT_EQ(errors.take(),
              "LogManager::startup(): Warning! Unable to open file 'missing/x.log'.\n"
              "Error starting log manager!\n" +
                  stars + "** Game engine stopped **\n");
    EXPECT_FALSE(game().isStarted());
}

TEST_F(GameStart, reports_a_failure_on_standard_error_once) {
    const std::string reason = "Its sides are 1 to 16384 long, in pixels and in characters.\n";
    const auto reported = [&] {
        test::CapturedErrors errors;
        EXPECT_EQ(start(0, "window_horizontal_chars:0,"), -1);
        game().shutDown();
        return errors.take();
    };
    EXPECT_EQ(reported(),
              "Selvane did not start. " + reason + "The log may say more: selvane.log\n");
    if (std::filesystem::path::preferred_separator != '/')
        GTEST_SKIP() << "no /dev/stderr here";
    test::setEnvironment(LOG_FILE_VARIABLE, "/dev/stderr");
    const std::string log = reported();
    EXPECT_TRUE(log.starts_with(stars)) << log;
    EXPECT_TRUE(
        log.ends_with("Error starting display manager!\n" + stars + "** Game engine stopped **\n"))
        << log;
    EXPECT_EQ(log.find(reason), log.rfind(reason)) << log;
}

TEST_F(GameStart, ends_where_a_manager_does_not_start) {
    struct Case {
        Manager &manager;
        const char *error;
    };
    const Case cases[] = {
        {DisplayManager::getInstance(), "Error starting display manager!"},
        {InputManager::getInstance(), "Error starting input manager!"},
        {NetworkManager::getInstance(), "Error starting network manager!"},
        {ResourceManager::getInstance(), "Error starting resource manager!"},
        {WorldManager::getInstance(), "Error starting world manager!"},
        {PathManager::getInstance(), "Error starting path manager!"},
    };
    Config::getInstance().loadConfig("headless:true,networking:true,");
    for (const Case &c : cases) {
        SCOPED_TRACE(c.error);
        ASSERT_EQ(c.manager.startUp(), 0); // The second start is the one that fails.
        EXPECT_EQ(start(), -1);
        EXPECT_EQ(logLines().back(), c.error);
        bool up = true;
        for (const Case &other : cases) {
            EXPECT_EQ(other.manager.isStarted(), up) << other.error;
            if (&other == &c)
                up = false;
        }
        EXPECT_FALSE(game().isStarted());
        game().shutDown();
        EXPECT_FALSE(c.manager.isStarted());
    }
    EXPECT_EQ(start(1), 0) << "a failed start cannot be made good";
    EXPECT_EQ(linesLike(".*already started.*|.*not started.*", logText()), "");
}

TEST_F(GameStart, seeds_the_random_numbers_as_configured) {
    const auto expect_seed = [&](int configured, unsigned seed, const std::string &line) {
        SCOPED_TRACE(configured);
        std::srand(seed);
        const int expected = std::rand();
        std::srand(7);
        ASSERT_EQ(start(10, "random_seed:" + std::to_string(configured) + ","), 0);
        EXPECT_EQ(std::rand(), expected);
        EXPECT_EQ(linesLike(".*srand.*", logText()), line);
        game().shutDown();
    };
    const std::string line = "GameManager()::startUp(): srand() seed with ";
    expect_seed(42, 42, line + "42\n");
    expect_seed(-2, 4'294'967'294U, line + "-2\n");
    expect_seed(-1, 7, ""); // Goes on with what was seeded before.

    const std::time_t before = std::time(nullptr);
    ASSERT_EQ(start(10, "random_seed:0,"), 0);
    const std::string logged = linesLike(".*srand.*", logText());
    ASSERT_TRUE(logged.starts_with(line)) << logged;
    const long seed = std::stol(logged.substr(line.size()));
    EXPECT_LE(before, seed);
    EXPECT_LE(seed, std::time(nullptr));
}

TEST_F(GameStart, warns_of_a_refused_timer_resolution) {
    ManualTime time;
    for (const int answer : {97, 1, 0}) {
        time.timer_answer = answer;
        ASSERT_EQ(start(1), 0);
        game().shutDown();
        EXPECT_EQ(
            linesLike(".*Period.*", logText()),
            answer != 97
                ? ""
                : "GameManager()::startUp(): Warning!  timeBeginPeriod() cannot accept 1 msec.\n"
                  "GameManager()::shutDown(): Warning! timeEndPeriod() cannot accept 1 msec.\n")
            << answer;
    }
}

TEST_F(GameStart, makes_the_world_as_large_as_the_window) {
    ASSERT_EQ(start(0, "window_horizontal_chars:70,window_vertical_chars:20,"), 0);
    const Box window{{0, 0}, 70, 20};
    const WorldManager &world = WorldManager::getInstance();
    EXPECT_EQ(world.getBoundary(), window);
    EXPECT_EQ(world.getView(), window);
    EXPECT_EQ(world.getViewSlack(), (Vector{0.33333334F, 0.33333334F}));
}

} // namespace
} // namespace sv
