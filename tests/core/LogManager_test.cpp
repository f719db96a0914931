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

struct Log : test::EngineTest {
    LogManager &log = LogManager::getInstance();
};

TEST_F(Log, lines_have_time_step_count_and_message) {
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
    for (const std::string shown : {"07:08:09", "07:08:10", "(time error)", "07:08:10"}) {
        time.local_second = shown.back() == '9' ? 9 : 10;
        time.local_time_fails = shown[0] == '(';
        log.writeLog("message");
        EXPECT_EQ(logLines().back(), shown + " message");
    }
}

TEST_F(Log, defaults_are_level_0_and_both_prefixes) {
    ManualTime time;
    EXPECT_EQ(test::errorsOf([&] {
                  log.writeLog(1, "one");
                  log.writeLog(0, "two");
              }),
              "07:08:09    0 two\n");
}

TEST_F(Log, lines_above_the_level_are_dropped) {
    const std::string raw = "100 % of %s and %n";
    const int raw_size = static_cast<int>(raw.size());
    startLog(5);
    EXPECT_EQ(log.writeLog(5, "%s", "five"), 4);
    EXPECT_EQ(log.writeLog(6, "%s", "six"), 0);
    EXPECT_EQ(log.writeLog(5, raw), raw_size);
    EXPECT_EQ(log.writeLog(6, raw), 0);
    log.setLogLevel(-1);
    EXPECT_EQ(log.writeLog(0, "zero"), 0);
    EXPECT_EQ(log.writeLog("always"), 6);
    EXPECT_EQ(log.writeLog(raw), raw_size);
    EXPECT_EQ(logText(), "five\n" + raw + "\nalways\n" + raw + "\n");
}

TEST_F(Log, a_line_is_in_the_file_at_once) {
    startLog();
    log.setFlush(false);
    for (const std::string text : {"one\n", "one\none\n"}) {
        log.writeLog("one");
        EXPECT_EQ(logText(), text);
    }
}

TEST_F(Log, another_programs_log_is_kept) {
    const std::string warning = "LogManager::startUp(): Warning! Another running program writes "
                                "the log 'selvane.log' too. SELVANE_LOG can name another file "
                                "for this one.\n";
    std::FILE *other = platform::openLog("selvane.log").p_file; // As that program does.
    ASSERT_TRUE(other);
    std::setbuf(other, nullptr);
    std::fputs("other 1\n", other);
    EXPECT_EQ(test::errorsOf([] { startLog(); }), warning);
    log.writeLog("own 1");
    std::fputs("other 2\n", other);
    log.writeLog("own 2");
    EXPECT_EQ(logText(), "other 1\n" + warning + "own 1\nother 2\nown 2\n");
    std::fclose(other);
}

// Each opening counts as another program.
struct SharedLog : Log {
    /// Opens the log and writes a line to it. Whether others have it open too.
    bool open(std::FILE *&file, const char *line) {
        const platform::LogFile opened = platform::openLog(name);
        file = opened.p_file;
        EXPECT_TRUE(file);
        std::setbuf(file, nullptr);
        std::fputs(line, file);
        return opened.is_shared;
    }

    std::string name = "selvane.log";
    std::FILE *files[3] = {};
};

TEST_F(SharedLog, is_emptied_only_by_its_sole_writer) {
    files[0] = platform::openNewLog(name);
    ASSERT_TRUE(files[0]);
    EXPECT_FALSE(platform::openNewLog(name)) << "its name is taken";
    std::setbuf(files[0], nullptr);
    std::fputs("first\n", files[0]);
    EXPECT_TRUE(open(files[1], "second\n"));
    std::fputs("first again\n", files[0]);
    std::fclose(files[0]);
    EXPECT_TRUE(open(files[2], "third\n")) << "the second still writes";
    EXPECT_EQ(logText(), "first\nsecond\nfirst again\nthird\n");
    std::fclose(files[1]);
    std::fclose(files[2]);
    EXPECT_FALSE(open(files[0], "alone\n"));
    EXPECT_EQ(logText(), "alone\n");
}

TEST_F(SharedLog, is_never_shared_when_a_device) {
    // Under Wine these files exist, but are another program's.
    if (std::filesystem::path::preferred_separator != '/')
        GTEST_SKIP() << "no /dev here";
    name = "/dev/null";
    EXPECT_FALSE(open(files[0], "first\n"));
    EXPECT_FALSE(open(files[1], "second\n"));

    const std::string errors = test::errorsOf([&] {
        std::fputs("first\n", stderr);
        name = "/dev/stderr";
        EXPECT_FALSE(open(files[2], "second\n"));
        std::fputs("third\n", stderr);
        std::fputs("fourth\n", files[2]);
    });
    EXPECT_EQ(errors, "first\nsecond\nthird\nfourth\n");
}

TEST_F(Log, a_full_disk_is_reported_once) {
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no /dev/full here";
    test::setEnvironment(LOG_FILE_VARIABLE, "/dev/full");
    for (const bool do_flush : {true, false}) {
        EXPECT_EQ(test::errorsOf([&] {
                      startLog();
                      log.setFlush(do_flush);
                      EXPECT_EQ(log.writeLog("message"), -1);
                      EXPECT_EQ(log.writeLog(1, "dropped"), 0);
                      EXPECT_EQ(log.writeLog(std::string("message")), -1);
                      log.shutDown();
                  }),
                  "LogManager::writeLog(): Warning! Unable to write the log file: No space left on "
                  "device.\n");
    }
}

TEST_F(Log, a_deleted_log_goes_on_in_a_new_file) {
    startLog();
    const std::string deleted =
        "LogManager::writeLog(): Warning! The log file 'selvane.log' was deleted. ";
    const auto two_lines = [&] {
        return test::errorsOf([&] {
            log.writeLog("one");
            log.writeLog("two");
        });
    };
    std::error_code refused;
    for (int i = 0; i < 2; ++i) {
        if (!std::filesystem::remove("selvane.log", refused))
            GTEST_SKIP() << "files that are open stay here";
        EXPECT_EQ(two_lines(), deleted + "The log goes on in a new one.\n");
        EXPECT_EQ(logText(), "one\ntwo\n");
    }
    std::filesystem::remove("selvane.log");
    writeFile("selvane.log", "another program's");
    EXPECT_EQ(two_lines(), deleted + "No other can be made: File exists.\n");
    EXPECT_EQ(logText(), "another program's");
}

TEST_F(Log, the_variable_wins_over_the_configuration) {
    Config::getInstance().loadConfig("logfile:configured.log,");
    startLog();
    log.shutDown();
    test::setEnvironment(LOG_FILE_VARIABLE, "variable.log");
    startLog();
    for (const char *name : {"configured.log", "variable.log"})
        EXPECT_TRUE(std::filesystem::exists(name)) << name;
    EXPECT_FALSE(std::filesystem::exists("selvane.log"));
    log.shutDown();
    test::setEnvironment(LOG_FILE_VARIABLE, "");
    if (!std::getenv(LOG_FILE_VARIABLE))
        GTEST_SKIP() << "no variable without a value here";
    EXPECT_EQ(log.startUp(), -1);
}

TEST_F(Log, a_new_start_empties_the_file) {
    startLog(5);
    EXPECT_EQ(log.startUp(), -1);
    EXPECT_EQ(test::errorsOf([&] { log.shutDown(); }), "");
    EXPECT_EQ(logText(), "LogManager::startup(): Warning! LogManager already started.\n"
                         "LogManager::shutDown(): successfully stopped.\n");
    EXPECT_EQ(test::errorsOf([&] { log.shutDown(); }),
              "Manager::shutDown(): Warning! LogManager not started.\n"
              "LogManager::shutDown(): successfully stopped.\n");
    ASSERT_EQ(log.startUp(), 0);
    EXPECT_EQ(logText(), "LogManager::startUp(): successfully started.\n");
}

using LogLevel = test::EngineTest;

TEST_F(LogLevel, begins_with_the_variable) {
    test::setEnvironment(LOG_LEVEL_VARIABLE, "7");
    LogManager &log = LogManager::getInstance();
    EXPECT_EQ(log.getLogLevel(), 7);
    test::setEnvironment(LOG_LEVEL_VARIABLE, "8");
    ASSERT_EQ(log.startUp(), 0);
    EXPECT_EQ(log.getLogLevel(), 7);
}

} // namespace
} // namespace sv
