#include "selvane/core/LogManager.h"

#include "selvane/core/Config.h"
#include "selvane/platform/ManualTime.h"
#include "selvane/platform/logFile.h"
#include "support/EngineTest.h"
#include "support/environment.h"

#include <cstdlib>
#include <filesystem>
#include <functional>

namespace sv {
namespace {

class Log : public test::EngineTest {
  protected:
    /// What is written to standard error meanwhile.
    static std::string errorsOf(const std::function<void()> &action) {
        test::CapturedErrors errors;
        action();
        return errors.take();
    }

    LogManager &log = LogManager::getInstance();
};

TEST_F(Log, a_line_is_time_step_count_and_message) {
    const struct {
        bool with_time, with_step;
        int step;
        const char *line;
    } cases[] = {
        {true, true, 89, "07:08:09   89 message 1"},
        {true, true, 12345, "07:08:09 12345 message 1"},
        {true, false, 7, "07:08:09 message 1"},
        {false, true, 7, "   7 message 1"},
        {false, false, 7, "message 1"},
    };
    ManualTime time;
    startLog();
    for (const auto &c : cases) {
        log.setLogTimeString(c.with_time);
        log.setLogStepCount(c.with_step);
        log.setStepCount(c.step);
        EXPECT_EQ(log.writeLog("message %d", 1), 9);
        EXPECT_EQ(logLines().back(), c.line);
    }
    log.setLogTimeString(true);
    const auto last_line = [&] {
        log.writeLog("message");
        return logLines().back();
    };
    EXPECT_EQ(last_line(), "07:08:09 message");
    time.local_second = 10;
    EXPECT_EQ(last_line(), "07:08:10 message");
    time.local_time_fails = true;
    EXPECT_EQ(last_line(), "(time error) message");
    time.local_time_fails = false;
    EXPECT_EQ(last_line(), "07:08:10 message");
}

TEST_F(Log, a_process_begins_with_level_0_and_both_prefixes) {
    ManualTime time;
    EXPECT_EQ(errorsOf([&] {
                  log.writeLog(1, "one");
                  log.writeLog(0, "two");
              }),
              "07:08:09    0 two\n");
}

TEST_F(Log, a_line_above_the_level_is_dropped) {
    const struct {
        int log_level, line_level;
        bool written;
    } cases[] = {{0, 0, true}, {0, 1, false}, {5, 5, true}, {5, 6, false}, {-1, 0, false}};
    startLog();
    for (const auto &c : cases) {
        log.setLogLevel(c.log_level);
        EXPECT_EQ(log.writeLog(c.line_level, "%s", "hi"), c.written ? 2 : 0);
        EXPECT_EQ(log.writeLog("always"), 6);
        EXPECT_EQ(said(), c.written ? "hi\nalways\n" : "always\n")
            << c.line_level << " at " << c.log_level;
    }
}

TEST_F(Log, a_line_is_in_the_file_at_once) {
    startLog();
    log.setFlush(false);
    log.writeLog("one %d", 1);
    EXPECT_EQ(logText(), "one 1\n");
    log.writeLog(std::string("two"));
    EXPECT_EQ(logText(), "one 1\ntwo\n");
}

TEST_F(Log, a_string_is_written_as_it_is) {
    const std::string text = "100 % of %s and %n";
    startLog();
    EXPECT_EQ(log.writeLog(text), static_cast<int>(text.size()));
    EXPECT_EQ(log.writeLog(0, text), static_cast<int>(text.size()));
    EXPECT_EQ(log.writeLog(1, text), 0);
    EXPECT_EQ(logText(), text + "\n" + text + "\n");
}

TEST_F(Log, another_programs_is_kept_and_both_go_on) {
    const std::string warning = "LogManager::startUp(): Warning! Another running program writes "
                                "the log 'selvane.log' too. SELVANE_LOG can name another file "
                                "for this one.\n";
    std::FILE *p_others = platform::openLog("selvane.log").p_file; // As that program does.
    ASSERT_NE(p_others, nullptr);
    const auto other_writes = [&](const char *line) {
        std::fputs(line, p_others);
        std::fflush(p_others);
    };
    other_writes("other 1\n");
    EXPECT_EQ(errorsOf([] { startLog(); }), warning);
    log.writeLog("own 1");
    other_writes("other 2\n");
    log.writeLog("own 2");
    EXPECT_EQ(logText(), "other 1\n" + warning + "own 1\nother 2\nown 2\n");
    std::fclose(p_others);
    log.shutDown();
    EXPECT_EQ(errorsOf([] { startLog(); }), "");
    EXPECT_EQ(logText(), "");
}

TEST_F(Log, a_file_that_cannot_be_opened_fails_the_start) {
    prepareLog();
    for (const std::string name : {"missing/x.log", ""}) {
        test::setEnvironment(LOG_FILE_VARIABLE, name);
        if (!std::getenv(LOG_FILE_VARIABLE))
            continue; // Some systems know no variable without a value.
        EXPECT_EQ(errorsOf([&] { EXPECT_EQ(log.startUp(), -1); }),
                  "LogManager::startup(): Warning! Unable to open file '" + name + "'.\n");
        EXPECT_FALSE(log.isStarted());
    }
}

TEST_F(Log, a_disk_that_is_full_fails_the_line) {
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no /dev/full here";
    test::setEnvironment(LOG_FILE_VARIABLE, "/dev/full");
    startLog();
    EXPECT_EQ(log.writeLog("message"), -1);
    EXPECT_EQ(log.writeLog(1, "dropped"), 0);
    log.setFlush(false);
    EXPECT_EQ(log.writeLog(std::string("message")), -1);
}

TEST_F(Log, the_variable_wins_over_the_configuration_and_that_over_the_default) {
    Config::getInstance().loadConfig("logfile:configured.log,");
    startLog();
    EXPECT_TRUE(std::filesystem::exists("configured.log"));
    log.shutDown();
    test::setEnvironment(LOG_FILE_VARIABLE, "variable.log");
    startLog();
    EXPECT_TRUE(std::filesystem::exists("variable.log"));
    EXPECT_FALSE(std::filesystem::exists("selvane.log"));
}

TEST_F(Log, a_stop_ends_the_file_and_a_new_start_empties_it) {
    startLog(5);
    EXPECT_EQ(log.startUp(), -1);
    EXPECT_EQ(errorsOf([&] { log.shutDown(); }), "");
    EXPECT_EQ(logText(), "LogManager::startup(): Warning! LogManager already started.\n"
                         "LogManager::shutDown(): successfully stopped.\n");
    EXPECT_EQ(errorsOf([&] { log.shutDown(); }),
              "Manager::shutDown(): Warning! LogManager not started.\n"
              "LogManager::shutDown(): successfully stopped.\n");
    ASSERT_EQ(log.startUp(), 0);
    EXPECT_EQ(logText(), "LogManager::startUp(): successfully started.\n");
}

class LogLevel : public test::EngineTest {};

TEST_F(LogLevel, is_the_variables_at_first_and_nobody_elses_after) {
    test::setEnvironment(LOG_LEVEL_VARIABLE, "7");
    LogManager &log = LogManager::getInstance();
    EXPECT_EQ(log.getLogLevel(), 7);
    test::setEnvironment(LOG_LEVEL_VARIABLE, "8");
    ASSERT_EQ(log.startUp(), 0);
    EXPECT_EQ(log.getLogLevel(), 7);
}

} // namespace
} // namespace sv
