#include "selvane/core/LogManager.h"

#include "selvane/core/Config.h"
#include "selvane/core/text.h"
#include "selvane/platform/logFile.h"
#include "selvane/platform/system.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace sv {

LogManager &LogManager::getInstance() {
    static LogManager &instance = *new LogManager;
    return instance;
}

LogManager::LogManager() {
    setType("LogManager");
    if (const char *level = std::getenv(LOG_LEVEL_VARIABLE))
        log_level = parseInt(level);
}

int LogManager::startUp() {
    if (isStarted())
        return refuseSecondStart();

    const char *variable = std::getenv(LOG_FILE_VARIABLE);
    file_name = variable ? variable : Config::getInstance().getLogFile();
    if (!forced_file.empty())
        file_name = forced_file;
    const platform::LogFile opened = platform::openLog(file_name);
    p_f.reset(opened.p_file);
    if (!p_f) {
        logFailure("LogManager::startup(): Warning! Unable to open file '%s'.", file_name.c_str());
        if (platform::isPipe(file_name))
            logLine("LogManager::startUp(): Note! It is a pipe that nobody reads.");
        return -1;
    }
    warned_write_failed = false;
    can_reopen = !platform::isDeleted(p_f.get()); // Standard output may be a deleted file.
    if (opened.is_shared)
        warnShared();
    Manager::startUp();
    writeLog(5, "LogManager::startUp(): successfully started.");
    return 0;
}

void LogManager::shutDown() {
    Manager::shutDown();
    writeLog(5, "LogManager::shutDown(): successfully stopped.");
    p_f.reset();
    extra_files.clear();
}

void LogManager::reset() {
    file_name.clear();
    last_failure = {};
}

int LogManager::writeLog(int line_level, const char *fmt, ...) {
    std::va_list args;
    va_start(args, fmt);
    const int written = vwriteLog(line_level, fmt, args);
    va_end(args);
    return written;
}

int LogManager::writeLog(const char *fmt, ...) {
    std::va_list args;
    va_start(args, fmt);
    const int written = vwriteLog(log_level, fmt, args);
    va_end(args);
    return written;
}

int LogManager::writeLog(const std::string &line) {
    return writeLog(log_level, line);
}

int LogManager::writeLog(int line_level, const std::string &line) {
    if (line_level > log_level)
        return 0;
    const bool is_begun = beginLine();
    const bool is_written = std::fwrite(line.data(), 1, line.size(), output()) == line.size();
    return endLine(is_written ? static_cast<int>(line.size()) : -1, is_begun);
}

int LogManager::vwriteLog(int line_level, const char *fmt, std::va_list args) {
    if (line_level > log_level)
        return 0;
    const bool is_begun = beginLine();
    const int written = std::vfprintf(output(), fmt, args);
    return endLine(written, is_begun);
}

void LogManager::setStepCount(int new_step_count) {
    std::snprintf(step_text.data(), step_text.size(), "%4d ", new_step_count);
}

/// False if a part failed; the rest of the line is tried all the same.
bool LogManager::beginLine() {
    if (p_f && do_flush)
        replaceDeletedFile();
    bool failed = false;
    if (log_time_string)
        failed |= std::fputs(getTimeString(), output()) < 0 || std::fputc(' ', output()) < 0;
    if (log_step_count)
        failed |= std::fputs(step_text.data(), output()) < 0;
    return !failed;
}

/// Flushes every line: if the program crashes, the log shows how far it got.
int LogManager::endLine(int written, bool is_begun) {
    bool failed = !is_begun || written < 0;
    failed |= std::fputc('\n', output()) < 0;
    failed |= std::fflush(output()) != 0;
    if (failed)
        warnWriteFailed();
    return failed ? -1 : written;
}

/// In the log for its reader, and on standard error for the person who starts the programs.
void LogManager::warnShared() {
    const std::string warning = "LogManager::startUp(): Warning! Another running program writes "
                                "the log '" +
                                file_name +
                                "' too. SELVANE_LOG can name another file for this one.";
    writeLog(warning);
    std::fprintf(stderr, "%s\n", warning.c_str());
}

/// Once for each log file: a full disk stays full for a while.
void LogManager::warnWriteFailed() {
    if (!p_f || warned_write_failed)
        return;
    warned_write_failed = true;
    std::fprintf(stderr, "LogManager::writeLog(): Warning! Unable to write the log file: %s.\n",
                 std::generic_category().message(errno).c_str());
}

/// The earlier lines went with the deleted file; later ones go to the new one.
void LogManager::replaceDeletedFile() {
    if (!can_reopen || !platform::isDeleted(p_f.get()))
        return;
    File fresh(platform::openNewLog(file_name)); // Only a new one: another program's stays.
    can_reopen = fresh != nullptr;
    const std::string then =
        fresh ? "The log goes on in a new one"
              : "No other can be made: " + std::generic_category().message(errno);
    std::fprintf(stderr, "LogManager::writeLog(): Warning! The log file '%s' was deleted. %s.\n",
                 file_name.c_str(), then.c_str());
    if (!fresh)
        return;
    p_f = std::move(fresh);
    warned_write_failed = false;
}

int logLine(int line_level, const char *fmt, ...) {
    std::va_list args;
    va_start(args, fmt);
    const int written = LogManager::getInstance().vwriteLog(line_level, fmt, args);
    va_end(args);
    return written;
}

int logLine(const char *fmt, ...) {
    LogManager &log = LogManager::getInstance();
    std::va_list args;
    va_start(args, fmt);
    const int written = log.vwriteLog(log.getLogLevel(), fmt, args);
    va_end(args);
    return written;
}

int logFailure(const char *fmt, ...) {
    LogManager &log = LogManager::getInstance();
    std::va_list args;
    va_start(args, fmt);
    std::vsnprintf(log.last_failure.data(), log.last_failure.size(), fmt, args);
    va_end(args);
    va_start(args, fmt);
    log.vwriteLog(log.getLogLevel(), fmt, args);
    va_end(args);
    return -1;
}

} // namespace sv
