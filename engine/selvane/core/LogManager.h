/// Writes the diagnostic lines of the engine and the game to one text file, and to standard error
/// while that file is not open. First manager to start, last to stop.
///
/// A line is the local time, the step count, and the message: "12:34:56   89 message". It is in the
/// file when writeLog() returns, even if the program crashes then. Game-loop thread only.
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

    /// Opens the log file and empties it, unless another running program writes it: then both
    /// append, with a warning here and on standard error. 0, or -1 if it cannot be opened or is
    /// open already.
    int startUp() override;

    /// Closes the log file; later lines go to standard error.
    void shutDown() override;

    /// Writes one line if `line_level` is at most the log level. Returns the length of the message
    /// in bytes, without prefixes and line end; 0 for a dropped line; -1 if any part of the line
    /// could not be written, with a warning on standard error the first time.
    int writeLog(int line_level, const char *fmt, ...) SV_PRINTF_FORMAT(3, 4);

    /// Writes one line at any log level.
    int writeLog(const char *fmt, ...) SV_PRINTF_FORMAT(2, 3);

    /// The same for a text that is not a format: any '%' is written as it is.
    int writeLog(int line_level, const std::string &line);
    int writeLog(const std::string &line);

    int vwriteLog(int line_level, const char *fmt, std::va_list args) SV_PRINTF_FORMAT(3, 0);

    /// Whether the log goes on in a new file, with a warning on standard error, when its file is
    /// deleted. Default: false.
    void setFlush(bool new_do_flush = true) { do_flush = new_do_flush; }
    bool getFlush() const { return do_flush; }

    /// The name of the current or last log file; empty before the first start.
    const std::string &getFileName() const { return file_name; }

    /// The last message of logFailure(), as the reason of a start that failed; at most 511 bytes.
    const char *getLastFailure() const { return last_failure.data(); }

    /// Lines of a higher level are dropped. Default: 0, or SELVANE_LOG_LEVEL at the log's first
    /// use. Starting and stopping do not change it.
    void setLogLevel(int new_log_level) { log_level = new_log_level; }
    int getLogLevel() const { return log_level; }

    /// Whether lines begin with the local time. Default: true.
    void setLogTimeString(bool new_log_time_string) { log_time_string = new_log_time_string; }
    bool getLogTimeString() const { return log_time_string; }

    /// Whether lines contain the step count. Default: true.
    void setLogStepCount(bool new_log_step_count) { log_step_count = new_log_step_count; }
    bool getLogStepCount() const { return log_step_count; }

    // Called by the engine.

    /// The step count of the following lines.
    void setStepCount(int new_step_count);

    /// The file that the next start opens, whatever environment and configuration say; empty: as
    /// they say.
    void setForcedFile(const std::string &name) { forced_file = name; }

    void reset() override;

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
    void warnShared();
    void warnWriteFailed();
    void replaceDeletedFile();

    bool do_flush = false;
    int log_level = 0;
    bool log_time_string = true;
    bool log_step_count = true;
    File p_f; // Null: standard error.
    std::string file_name;
    std::string forced_file;
    bool warned_write_failed = false;
    bool can_reopen = true; // A new file may replace it when it is deleted.
    // More log files by name, closed with the log. Nothing opens one yet.
    std::map<std::string, File> extra_files;
    std::array<char, 16> step_text{"   0 "}; // As it stands in a line.
    std::array<char, 512> last_failure{};
};

/// Short for LogManager's writeLog(). The engine's lines have levels 0 to 30: the higher, the more
/// detail.
int logLine(int line_level, const char *fmt, ...) SV_PRINTF_FORMAT(2, 3);
int logLine(const char *fmt, ...) SV_PRINTF_FORMAT(1, 2);

/// Writes a line at any log level and returns -1, so that a refusal is one statement.
int logFailure(const char *fmt, ...) SV_PRINTF_FORMAT(1, 2);

} // namespace sv
