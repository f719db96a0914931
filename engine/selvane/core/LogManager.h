/// Writes the diagnostic lines of the engine and the game to one text file, and to standard error
/// while that file is not open. First manager to start, last to stop.
///
/// A line is the local time, the step count, and the message: "12:34:56   89 message". It is in the
/// file when writeLog() returns, even if the program dies of what it does next. Game-loop thread
/// only: the time text lives in a shared buffer.
#pragma once

#include "selvane/core/Manager.h"
#include "selvane/platform/printfFormat.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <map>
#include <memory>
#include <string>

namespace sv {

/// Names the log file; wins over the configuration's "logfile".
inline constexpr char LOG_FILE_VARIABLE[] = "SELVANE_LOG";
/// Sets the log level that a process begins with, an integer.
inline constexpr char LOG_LEVEL_VARIABLE[] = "SELVANE_LOG_LEVEL";

class LogManager : public Manager {
  public:
    static LogManager &getInstance();

    /// Opens the log file, emptying an earlier one; but not one that another running program
    /// writes: then both add to it, and a line here and on standard error says so. 0, or -1 if it
    /// cannot be opened or is open.
    int startUp() override;

    /// Closes the log file; later lines go to standard error.
    void shutDown() override;

    /// Writes one line if `line_level` is at most the log level. Returns the length of the message
    /// in bytes, prefixes and line end left out; 0 for a dropped line; -1 if any part of the line
    /// could not be written. The first time that happens to a log file, a line on standard error
    /// says so.
    int writeLog(int line_level, const char *fmt, ...) SV_PRINTF_FORMAT(3, 4);

    /// Writes one line at any log level.
    int writeLog(const char *fmt, ...) SV_PRINTF_FORMAT(2, 3);

    /// The same for a text that is no format: it is written as it is, whatever '%' it has.
    int writeLog(int line_level, const std::string &line);
    int writeLog(const std::string &line);

    int vwriteLog(int line_level, const char *fmt, std::va_list args) SV_PRINTF_FORMAT(3, 0);

    /// Whether each line first looks if the log file is still there. If it has been deleted, the
    /// line begins a new one, and standard error says so. Default: not until this is called.
    void setFlush(bool new_do_flush = true) { do_flush = new_do_flush; }
    bool getFlush() const { return do_flush; }

    /// The file that the log went into last, as it is named; empty before its first start.
    const std::string &getFileName() const { return file_name; }

    /// What logFailure() last wrote: of a start that failed, the reason. A long one is cut.
    const char *getLastFailure() const { return last_failure.data(); }

    /// A line whose level is above this is dropped. Default 0, or SELVANE_LOG_LEVEL at the log's
    /// first use; starting and stopping leave it alone.
    void setLogLevel(int new_log_level) { log_level = new_log_level; }
    int getLogLevel() const { return log_level; }

    /// Whether lines begin with the local time. Default: they do.
    void setLogTimeString(bool new_log_time_string) { log_time_string = new_log_time_string; }
    bool getLogTimeString() const { return log_time_string; }

    /// Whether lines carry the step count. Default: they do.
    void setLogStepCount(bool new_log_step_count) { log_step_count = new_log_step_count; }
    bool getLogStepCount() const { return log_step_count; }

    /// The step count of the lines to come. The game loop says it, so that the log need not know
    /// the loop.
    void setStepCount(int new_step_count);

  private:
    friend int logFailure(const char *fmt, ...);

    struct FileCloser {
        void operator()(std::FILE *file) const { std::fclose(file); }
    };
    using File = std::unique_ptr<std::FILE, FileCloser>;

    LogManager();

    std::FILE *output() const { return p_f ? p_f.get() : stderr; }
    bool beginLine();
    int endLine(int written, bool is_begun);
    void sayShared();
    void sayUnwritable();
    void replaceDeletedFile();

    bool do_flush = false;
    int log_level = 0;
    bool log_time_string = true;
    bool log_step_count = true;
    File p_f; // Null: standard error.
    std::string file_name;
    bool unwritable_is_said = false;
    bool is_irreplaceable = false; // If it is deleted, no other is made.
    // Further log files by name. Nothing opens one yet; each is closed with the log.
    std::map<std::string, File> extra_files;
    std::array<char, 16> step_text{"   0 "}; // As it stands in a line.
    std::array<char, 512> last_failure{};
};

/// LogManager's writeLog() by a short name, for every line that the engine and a game write. The
/// line's level is 0 to 30 in the engine: the higher, the more detail.
int logLine(int line_level, const char *fmt, ...) SV_PRINTF_FORMAT(2, 3);
int logLine(const char *fmt, ...) SV_PRINTF_FORMAT(1, 2);

/// Writes a line at any log level and returns -1, so that a refusal is one statement.
int logFailure(const char *fmt, ...) SV_PRINTF_FORMAT(1, 2);

} // namespace sv
