/// What a session changes for the whole process, as it was before: the working folder, the time,
/// the settings, the log, the input, the screen, the sound and the random numbers. Puts all of it
/// back at its end, and the managers into the state of before their first start.
#pragma once

#include "selvane/core/Config.h"
#include "selvane/platform/ManualTime.h"

#include <filesystem>
#include <string>

namespace sv {

class InputSource;

class EngineState {
  public:
    /// REQUIRES: the engine is not started.
    EngineState();

    /// Stops the engine if it is still started.
    ~EngineState();
    EngineState(const EngineState &) = delete;
    EngineState &operator=(const EngineState &) = delete;

    /// The clock that stands still, in use as long as this lives.
    ManualTime &getTime() { return time; }

    std::string logText() const;

  private:
    void restoreLog() const;

    ManualTime time;
    std::filesystem::path folder;
    Config config;
    InputSource &input;
    bool is_captured;
    unsigned next_seed;
    int log_level;
    bool has_time_string;
    bool has_step_count;
    bool does_flush;
    std::filesystem::path log_file; // Nobody else's, and gone at the end.
};

} // namespace sv
