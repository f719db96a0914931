#include "selvane/loop/GameManager.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/input/InputManager.h"
#include "selvane/network/NetworkManager.h"
#include "selvane/path/PathManager.h"
#include "selvane/platform/ManualTime.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/world/WorldManager.h"
#include "support/Clockwork.h"
#include "support/EngineTest.h"
#include "support/environment.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <regex>

namespace sv {
namespace {

using Lines = std::vector<std::string>;

/// The engine without a window, at a clock of the test's own.
class Game : public test::EngineTest {
  protected:
    void TearDown() override {
        if (game.isStarted())
            game.shutDown();
    }

    int start(int log_level = 0, const std::string &config = "") {
        writeFile("sv-config.txt", "headless:true,\n" + config);
        prepareLog(log_level);
        return game.startUp();
    }

    /// Runs the loop with an action in each step.
    void run(const std::function<void(int)> &action) {
        const test::Clockwork clockwork(action);
        game.run();
    }

    void runSteps(int count) {
        run([&](int step) { game.setGameOver(step + 1 == count); });
    }

    /// The log's lines that match.
    static Lines linesLike(const std::string &pattern) {
        Lines lines = logLines();
        const std::regex regex(pattern);
        std::erase_if(lines, [&](const auto &line) { return !std::regex_match(line, regex); });
        return lines;
    }

    GameManager &game = GameManager::getInstance();
    ManualTime time;
};

const std::string stars = std::string(52, '*') + "\n";

TEST_F(Game, a_log_reads_like_this) {
    writeFile("sv-config.txt", "headless:true,");
    ASSERT_EQ(game.startUp(), 0);
    runSteps(12);
    LogManager::getInstance().writeLog("after");
    runSteps(3);
    game.shutDown();
    EXPECT_EQ(logText(), "07:08:09    0 " + stars +
                             "07:08:09    0 ** Selvane version 4.18 **\n"
                             "07:08:09    0 ** Game engine started **\n"
                             "07:08:09    0 " +
                             stars +
                             "07:08:09   12 after\n"
                             "07:08:09    3 " +
                             stars + "07:08:09    3 ** Game engine stopped **\n");
}

TEST_F(Game, starts_the_managers_in_order_and_stops_them_in_reverse) {
    ASSERT_EQ(start(5, "frame_time:40,\nrandom_seed:-1,\nnetworking:true,\n"), 0);
    EXPECT_FALSE(game.getGameOver());
    EXPECT_EQ(time.open_timer_periods, 1);
    runSteps(2);
    test::CapturedErrors errors;
    game.shutDown();
    EXPECT_EQ(errors.take(), "") << "the log was closed too early";
    std::string own;
    for (const auto &line : linesLike("Game.*|Error.*|\\w+ [Mm]anager (started\\.|stopped)"))
        own += line + "\n";
    EXPECT_EQ(own, "Log Manager started.\nGameManager::startUp(): frame time is 40\n"
                   "Display manager started.\nInput manager started.\n"
                   "Network manager started.\nResource manager started.\n"
                   "World manager started.\nPath manager started.\n"
                   "GameManager successfully started.\n"
                   "GameManager::run(): starting game loop\n"
                   "GameManager::run(): end of game loop\n"
                   "Path manager stopped\nWorld manager stopped\n"
                   "Resource manager stopped\nNetwork manager stopped\n"
                   "Input manager stopped\nDisplay manager stopped\n");
    EXPECT_EQ(logLines().back(), "LogManager::shutDown(): successfully stopped.");
    EXPECT_TRUE(game.getGameOver());
    EXPECT_EQ(time.open_timer_periods, 0);
}

TEST_F(Game, prints_configuration_and_working_directory_at_level_1) {
    const std::filesystem::path here = std::filesystem::current_path();
    const std::filesystem::path deep = here / std::string(200, 'x') / std::string(100, 'y');
    std::filesystem::create_directories(deep);
    for (const std::string &line : {here.string(), std::string("(full path too long)")}) {
        ASSERT_EQ(start(1), 0);
        EXPECT_NE(logText().find("---\nWorking directory:\n  " + line + "\nLog Manager started.\n"),
                  std::string::npos)
            << logText();
        EXPECT_EQ(linesLike("Network manager.*"), Lines()) << "only if configured";
        game.shutDown();
        std::filesystem::current_path(deep);
    }
}

TEST_F(Game, a_second_start_is_refused_and_changes_nothing) {
    ASSERT_EQ(start(), 0);
    writeFile("sv-config.txt", "frame_time:50,");
    said();
    EXPECT_EQ(game.startUp(), -1);
    EXPECT_EQ(said(), "GameManager::startup(): Warning! GameManager already started.\n");
    EXPECT_TRUE(game.isStarted());
    EXPECT_EQ(Config::getInstance().getFrameTime(), 33);
}

TEST_F(Game, a_log_that_cannot_be_opened_fails_the_start) {
    test::setEnvironment(LOG_FILE_VARIABLE, "missing/x.log");
    test::CapturedErrors errors;
    EXPECT_EQ(start(), -1);
    game.shutDown();
    EXPECT_EQ(errors.take(),
              "LogManager::startup(): Warning! Unable to open file 'missing/x.log'.\n"
              "Error starting log manager!\n" +
                  stars + "** Game engine stopped **\n");
    EXPECT_FALSE(game.isStarted());
}

TEST_F(Game, a_failed_start_is_told_on_standard_error_once) {
    const std::string reason = "Its sides are 1 to 16384 long, in pixels and in characters.\n";
    const auto told = [&] {
        test::CapturedErrors errors;
        EXPECT_EQ(start(0, "window_horizontal_chars:0,"), -1);
        game.shutDown();
        return errors.take();
    };
    EXPECT_EQ(told(), "Selvane did not start. " + reason + "The log may say more: selvane.log\n");
    if (std::filesystem::path::preferred_separator != '/')
        GTEST_SKIP() << "no /dev/stderr here";
    test::setEnvironment(LOG_FILE_VARIABLE, "/dev/stderr");
    const std::string log = told();
    EXPECT_TRUE(log.starts_with(stars)) << log;
    EXPECT_TRUE(
        log.ends_with("Error starting display manager!\n" + stars + "** Game engine stopped **\n"))
        << log;
    EXPECT_EQ(log.find(reason), log.rfind(reason)) << log;
}

TEST_F(Game, a_manager_that_does_not_start_ends_the_start_there) {
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
        EXPECT_FALSE(game.isStarted());
        game.shutDown();
        EXPECT_FALSE(c.manager.isStarted());
    }
    EXPECT_EQ(start(1), 0) << "a failed start cannot be made good";
    EXPECT_EQ(linesLike(".*already started.*|.*not started.*"), Lines());
}

TEST_F(Game, seeds_the_random_numbers_as_configured) {
    const struct {
        const char *config;
        unsigned seed;
        Lines said;
    } cases[] = {
        {"random_seed:42,", 42, {"GameManager()::startUp(): srand() seed with 42"}},
        {"random_seed:-2,", 4'294'967'294U, {"GameManager()::startUp(): srand() seed with -2"}},
        {"random_seed:-1,", 7, {}}, // Goes on with what was seeded before.
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.config);
        std::srand(c.seed);
        const int expected = std::rand();
        std::srand(7);
        ASSERT_EQ(start(10, c.config), 0);
        EXPECT_EQ(std::rand(), expected);
        EXPECT_EQ(linesLike(".*srand.*"), c.said);
        game.shutDown();
    }

    const std::time_t before = std::time(nullptr);
    ASSERT_EQ(start(10, "random_seed:0,"), 0);
    const Lines said = linesLike(".*srand.*");
    ASSERT_EQ(said.size(), 1U);
    const long seed = std::stol(said[0].substr(said[0].rfind(' ')));
    EXPECT_LE(before, seed);
    EXPECT_LE(seed, std::time(nullptr));
}

TEST_F(Game, a_refused_timer_resolution_is_a_warning) {
    const Lines refusals{
        "GameManager()::startUp(): Warning!  timeBeginPeriod() cannot accept 1 msec.",
        "GameManager()::shutDown(): Warning! timeEndPeriod() cannot accept 1 msec."};
    for (const int answer : {97, 1, 0}) {
        time.timer_answer = answer;
        ASSERT_EQ(start(1), 0);
        game.shutDown();
        EXPECT_EQ(linesLike(".*Period.*"), answer == 97 ? refusals : Lines()) << answer;
    }
}

TEST_F(Game, the_world_begins_as_large_as_the_window) {
    ASSERT_EQ(start(0, "window_horizontal_chars:70,window_vertical_chars:20,"), 0);
    const Box window{{0, 0}, 70, 20};
    const WorldManager &world = WorldManager::getInstance();
    EXPECT_EQ(world.getBoundary(), window);
    EXPECT_EQ(world.getView(), window);
    EXPECT_EQ(world.getViewSlack(), (Vector{0.33333334F, 0.33333334F}));
}

TEST_F(Game, each_run_begins_at_step_0_with_a_game_that_is_not_over_and_ends_with_a_whole_step) {
    ASSERT_EQ(start(1), 0);
    std::vector<int> steps;
    for (int i = 0; i < 2; ++i) {
        time.sleeps.clear();
        game.setGameOver();
        run([&](int step) {
            steps.push_back(step);
            EXPECT_EQ(game.getStepCount(), step);
            EXPECT_FALSE(game.getGameOver());
            game.setGameOver(step == 2);
        });
        EXPECT_EQ(game.getStepCount(), 3);
        EXPECT_EQ(time.sleeps, (std::vector<int>{33, 33, 33}));
    }
    EXPECT_EQ(steps, (std::vector<int>{0, 1, 2, 0, 1, 2}));
}

TEST_F(Game, steps_follow_each_other_at_the_frame_time) {
    ASSERT_EQ(start(), 0);
    std::vector<long long> begins;
    time.now_ms = 100;
    run([&](int step) {
        begins.push_back(time.now_ms);
        time.oversleep_ms = step == 1 ? 5 : 0;
        time.now_ms += step == 4 ? 50 : 10;
        game.setGameOver(step == 5);
    });
    EXPECT_EQ(begins, (std::vector<long long>{100, 133, 171, 199, 232, 282}));
    EXPECT_EQ(linesLike("GameManager.*"),
              Lines{"GameManager::run(): Can't keep up! frame_time 33 ms, split 50 ms"});
}

/// Asks for the same path again and again, and takes 5 ms of every answer.
class Seeker : public Object {
  public:
    Seeker(float new_y, ManualTime &new_time, std::vector<int> &new_told)
        : y(new_y), time(new_time), told(new_told) {
        setPosition({0, y});
        findPath({1, y});
    }

    int eventHandler(const Event * /*p_event*/) override {
        told.push_back(GameManager::getInstance().getStepCount());
        time.now_ms += 5;
        return findPath({1, y});
    }

  private:
    float y;
    ManualTime &time;
    std::vector<int> &told;
};

TEST_F(Game, paths_are_found_in_frames_without_time_for_them) {
    for (const char *config : {"frame_time:0,", "frame_time:1,", "frame_time:-20,"}) {
        SCOPED_TRACE(config);
        ASSERT_EQ(start(0, config), 0);
        std::vector<int> told;
        for (const float y : {0.0F, 3.0F, 6.0F})
            new Seeker(y, time, told);
        run([&](int step) {
            time.now_ms += 2;
            game.setGameOver(step == 4);
        });
        EXPECT_EQ(told, (std::vector<int>{1, 1, 1, 3, 3, 3})) << "each had one turn a step";
        game.shutDown();
    }
}

TEST_F(Game, a_process_may_end_with_everything_started) {
    testing::GTEST_FLAG(death_test_style) = "fast";
    shareLog();
    EXPECT_EXIT(
        {
            if (start(1) != 0)
                std::exit(2);
            LogManager::getInstance().setFlush(false);
            runSteps(2);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(logCount("GameManager::run(): end of game loop"), 1) << "the log lost its end";
}

} // namespace
} // namespace sv
