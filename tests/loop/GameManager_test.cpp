#include "selvane/loop/GameManager.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/input/InputManager.h"
#include "selvane/network/NetworkManager.h"
#include "selvane/path/PathManager.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/testing/Session.h"
#include "support/EngineTest.h"
#include "support/environment.h"
#include "support/waveFile.h"

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

struct GameManagerTest : test::EngineTest {
    /// Without a session, which has its own log file and puts the random numbers back.
    static int start(const std::string &config = "", int log_level = 0) {
        writeFile("sv-config.txt", "headless:true," + config);
        prepareLog(log_level);
        return game().startUp();
    }

    static std::string errorsOfFailedStart(const std::string &config) {
        return test::errorsOf([&] {
            EXPECT_EQ(start(config), -1);
            game().shutDown();
        });
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
    const std::filesystem::path here = std::filesystem::current_path();
    const std::filesystem::path deep = here / std::string(200, 'x') / std::string(100, 'y');
    std::filesystem::create_directories(deep);
    const auto expect_log = [](const std::filesystem::path &place, int timer_answer,
                               const std::string &directory, const std::string &refused_begin,
                               const std::string &refused_end) {
        Session session(
            {.config = "frame_time:40,networking:true,", .folder = place.string(), .log_level = 5});
        session.getTime().timer_answer = timer_answer;
        ASSERT_EQ(session.start(), 0);
        EXPECT_EQ(session.getTime().open_timer_periods, 1);
        session.closeWindow();
        EXPECT_FALSE(session.play());
        EXPECT_EQ(session.getTime().open_timer_periods, 0);
        const std::string pattern = "Game.*|Error.*|-+|Working directory:|  .*(selvane-test|too "
                                    "long).*|\\w+ [Mm]anager (started\\.|stopped)";
        const std::string ruler = std::string(35, '-') + "\n";
        EXPECT_EQ(linesLike(pattern, session.log()),
                  ruler + ruler + "Working directory:\n  " + directory +
                      "\nLog Manager started.\n"
                      "GameManager::startUp(): frame time is 40\n"
                      "Display manager started.\nInput manager started.\n"
                      "Network manager started.\nResource manager started.\n"
                      "World manager started.\nPath manager started.\n" +
                      refused_begin +
                      "GameManager successfully started.\n"
                      "GameManager::run(): starting game loop\n"
                      "GameManager::run(): end of game loop\n" +
                      refused_end +
                      "Path manager stopped\nWorld manager stopped\n"
                      "Resource manager stopped\nNetwork manager stopped\n"
                      "Input manager stopped\nDisplay manager stopped\n");
        EXPECT_TRUE(session.log().ends_with("LogManager::shutDown(): successfully stopped.\n"));
    };
    expect_log(here, 1, here.string(), "", "");
    expect_log(deep, platform::timer_period_refused, "(full path too long)",
               "GameManager()::startUp(): Warning!  timeBeginPeriod() cannot accept 1 msec.\n",
               "GameManager()::shutDown(): Warning! timeEndPeriod() cannot accept 1 msec.\n");
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
    EXPECT_FALSE(NetworkManager::getInstance().isStarted()) << "only if configured";
}

TEST_F(GameManagerTest, fails_without_a_log_file) {
    test::setEnvironment(LOG_FILE_VARIABLE, "missing/x.log");
    EXPECT_EQ(errorsOfFailedStart(""),
              "LogManager::startup(): Warning! Unable to open file 'missing/x.log'.\n"
              "Error starting log manager!\n" +
                  stars + "** Game engine stopped **\n");
    EXPECT_FALSE(game().isStarted());
}

TEST_F(GameManagerTest, reports_a_failure_on_standard_error_once) {
    const std::string reason = "Its sides are 1 to 16384 long, in pixels and in characters.\n";
    EXPECT_EQ(errorsOfFailedStart("window_horizontal_chars:0,"),
              "Selvane did not start. " + reason + "The log may say more: selvane.log\n");
    if (std::filesystem::path::preferred_separator != '/')
        GTEST_SKIP() << "no /dev/stderr here";
    test::setEnvironment(LOG_FILE_VARIABLE, "/dev/stderr");
    const std::string log = errorsOfFailedStart("window_horizontal_chars:0,");
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

using Globals = test::EngineTest;

TEST_F(Globals, may_use_the_engine_around_main) {
    test::setEnvironment("ALSOFT_DRIVERS", "null");
    writeFile("beep.wav", test::waveFile(std::vector<std::int16_t>(400, 9000)));
    for (const char *way : {"engine", "exit", "atexit", "late"}) {
        test::setEnvironment("SELVANE_TEST_WAY", way);
        const std::string text =
            test::errorsOf([&] { EXPECT_EQ(std::system("\"" GLOBALS_PROGRAM "\""), 0) << way; });
        EXPECT_NE(text.find("last words"), std::string::npos) << way;
        EXPECT_EQ(text.find("device not closed"), std::string::npos) << "OpenAL's complaint";
        EXPECT_NE(logText().find("** Game engine stopped **"), std::string::npos) << way;
    }
}

} // namespace
} // namespace sv
