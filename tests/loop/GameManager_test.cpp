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

class GameManagerTest : public test::EngineTest {
  protected:
    /// Without a session, which has its own log file and puts the random numbers back.
    static int start(const std::string &config = "", int log_level = 0) {
        writeFile("sv-config.txt", "headless:true," + config);
        prepareLog(log_level);
        return game().startUp();
    }
};

TEST_F(GameManagerTest, numbers_the_steps_of_each_run) {
    Session session([] {
        LogManager::getInstance().setLogTimeString(true);
        LogManager::getInstance().setLogStepCount(true);
        game().startUp();
        game().setGameOver(); // Of no consequence: a run begins with a game that is not over.
        game().run();
        logLine("after");
        game().run();
        game().shutDown();
        return 0;
    });
    session.play(11);
    game().setGameOver();
    session.play(3);
    EXPECT_EQ(session.getTime().sleeps, std::vector<int>(14, 33)) << "the last step was whole";
    session.end();
    const std::string at_0 = "07:08:09    0 ";
    const std::string at_3 = "07:08:09    3 ";
    EXPECT_EQ(session.log(), at_0 + stars + at_0 + "** Selvane version 4.18 **\n" + at_0 +
                                 "** Game engine started **\n" + at_0 + stars +
                                 "07:08:09   12 after\n" + at_3 + stars + at_3 +
                                 "** Game engine stopped **\n");
}

TEST_F(GameManagerTest, starts_managers_in_order_and_stops_them_reversed) {
    for (const int answer : {1, platform::timer_period_refused}) {
        Session session({.config = "frame_time:40,networking:true,", .log_level = 5});
        session.getTime().timer_answer = answer;
        ASSERT_EQ(session.start(), 0);
        EXPECT_EQ(session.getTime().open_timer_periods, 1);
        session.closeWindow();
        EXPECT_FALSE(session.play());
        EXPECT_EQ(session.getTime().open_timer_periods, 0);
        const auto refused = [&](const std::string &line) {
            return answer == 1 ? "" : "GameManager()::" + line + "Period() cannot accept 1 msec.\n";
        };
        EXPECT_EQ(linesLike("Game.*|Error.*|\\w+ [Mm]anager (started\\.|stopped)", session.log()),
                  "Log Manager started.\nGameManager::startUp(): frame time is 40\n"
                  "Display manager started.\nInput manager started.\n"
                  "Network manager started.\nResource manager started.\n"
                  "World manager started.\nPath manager started.\n" +
                      refused("startUp(): Warning!  timeBegin") +
                      "GameManager successfully started.\n"
                      "GameManager::run(): starting game loop\n"
                      "GameManager::run(): end of game loop\n" +
                      refused("shutDown(): Warning! timeEnd") +
                      "Path manager stopped\nWorld manager stopped\n"
                      "Resource manager stopped\nNetwork manager stopped\n"
                      "Input manager stopped\nDisplay manager stopped\n");
        EXPECT_TRUE(session.log().ends_with("LogManager::shutDown(): successfully stopped.\n"));
    }
}

/// Takes 5 ms of the path that it gets.
struct Seeker : Object {
    Seeker(float y, Session &new_session) : session(new_session) {
        setPosition({0, y});
        findPath({1, y});
    }
    int eventHandler(const Event * /*p_event*/) override {
        session.getTime().now_ms += 5;
        return ++paths;
    }
    Session &session;
    int paths = 0;
};

TEST_F(GameManagerTest, finds_paths_without_time_for_them) {
    for (const char *config : {"frame_time:0,", "frame_time:1,", "frame_time:-20,"}) {
        Session session({.config = config});
        ASSERT_EQ(session.start(), 0);
        for (const float y : {0.0F, 3.0F, 6.0F})
            spawn<Seeker>(y, session);
        for (int step = 0; step < 2; ++step) {
            session.getTime().now_ms += 2;
            session.play();
        }
        for (const Seeker *seeker : session.objects<Seeker>())
            EXPECT_EQ(seeker->paths, 1) << config;
    }
}

TEST_F(GameManagerTest, prints_configuration_and_working_directory) {
    const std::filesystem::path here = std::filesystem::current_path();
    const std::filesystem::path deep = here / std::string(200, 'x') / std::string(100, 'y');
    std::filesystem::create_directories(deep);
    const auto expect_line = [](const std::filesystem::path &place, const std::string &line) {
        Session session({.folder = place.string(), .log_level = 1});
        ASSERT_EQ(session.start(), 0);
        EXPECT_NE(session.log().find("---\nWorking directory:\n  " + line + "\nLog Manager st"),
                  std::string::npos)
            << session.log();
        EXPECT_EQ(linesLike("Network manager.*", session.log()), "") << "only if configured";
    };
    expect_line(here, here.string());
    expect_line(deep, "(full path too long)");
}

TEST_F(GameManagerTest, refuses_a_second_start) {
    Session session;
    ASSERT_EQ(session.start(), 0);
    writeFile("sv-config.txt", "frame_time:50,");
    EXPECT_EQ(game().startUp(), -1);
    EXPECT_TRUE(
        session.log().ends_with("GameManager::startup(): Warning! GameManager already started.\n"));
    EXPECT_EQ(Config::getInstance().getFrameTime(), 33);
    EXPECT_TRUE(session.play());
}

TEST_F(GameManagerTest, makes_the_world_as_large_as_the_window) {
    Session session({.columns = 70, .rows = 20});
    ASSERT_EQ(session.start(), 0);
    const WorldManager &world = WorldManager::getInstance();
    EXPECT_EQ(world.getBoundary(), (Box{{0, 0}, 70, 20}));
    EXPECT_EQ(world.getView(), world.getBoundary());
    EXPECT_EQ(world.getViewSlack(), (Vector{0.33333334F, 0.33333334F}));
}

TEST_F(GameManagerTest, fails_without_a_log_file) {
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

TEST_F(GameManagerTest, reports_a_failure_on_standard_error_once) {
    const std::string reason = "Its sides are 1 to 16384 long, in pixels and in characters.\n";
    const auto reported = [&] {
        test::CapturedErrors errors;
        EXPECT_EQ(start("window_horizontal_chars:0,"), -1);
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
    EXPECT_EQ(log.find(reason), log.rfind(reason)) << log;
    EXPECT_EQ(log.find("Selvane did not start"), std::string::npos) << log;
}

TEST_F(GameManagerTest, ends_where_a_manager_does_not_start) {
    const std::pair<Manager *, std::string> managers[] = {
        {&DisplayManager::getInstance(), "display"}, {&InputManager::getInstance(), "input"},
        {&NetworkManager::getInstance(), "network"}, {&ResourceManager::getInstance(), "resource"},
        {&WorldManager::getInstance(), "world"},     {&PathManager::getInstance(), "path"},
    };
    Config::getInstance().loadConfig("headless:true,networking:true,");
    for (const auto &[manager, name] : managers) {
        SCOPED_TRACE(name);
        ASSERT_EQ(manager->startUp(), 0); // The second start is the one that fails.
        EXPECT_EQ(start(), -1);
        EXPECT_EQ(logLines().back(), "Error starting " + name + " manager!");
        bool is_before = true;
        for (const auto &[other, other_name] : managers) {
            EXPECT_EQ(other->isStarted(), is_before) << other_name;
            is_before = is_before && other != manager;
        }
        EXPECT_FALSE(game().isStarted());
        game().shutDown();
        EXPECT_FALSE(manager->isStarted());
    }
}

TEST_F(GameManagerTest, seeds_the_random_numbers_as_configured) {
    const std::string line = "GameManager()::startUp(): srand() seed with ";
    const auto expect_seed = [](int configured, unsigned seed, const std::string &logged) {
        SCOPED_TRACE(configured);
        std::srand(seed);
        const int expected = std::rand();
        std::srand(7);
        ASSERT_EQ(start("random_seed:" + std::to_string(configured) + ",", 10), 0);
        EXPECT_EQ(std::rand(), expected);
        EXPECT_EQ(linesLike(".*srand.*", logText()), logged);
        game().shutDown();
    };
    expect_seed(42, 42, line + "42\n");
    expect_seed(-2, 4'294'967'294U, line + "-2\n");
    expect_seed(-1, 7, ""); // Goes on with what was seeded before.
    const std::time_t before = std::time(nullptr);
    ASSERT_EQ(start("random_seed:0,", 10), 0);
    const long seed = std::stol(linesLike(".*srand.*", logText()).substr(line.size()));
    EXPECT_LE(before, seed);
    EXPECT_LE(seed, std::time(nullptr));
    game().shutDown();
}

} // namespace
} // namespace sv
