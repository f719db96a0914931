/// Writes a game down, so that it can be played again: what comes from outside, and the world at
/// the end of each step. The settings start it ("record", SELVANE_RECORD), or the game does.
///
/// Game-loop thread only.
#pragma once

#include "selvane/record/RecordFile.h"
#include "selvane/record/WorldState.h"

#include <memory>
#include <string>

namespace sv {

class Recorder {
  public:
    static Recorder &getInstance();

    /// Begins a record here, in a handler or between two runs, and seeds the random numbers anew:
    /// to play it, begin at the same place in the code, with the same objects. Ends a record that
    /// the game has begun. 0, or -1 with a line in the log: the file cannot be written, or a record
    /// is being played, or the settings have the whole game recorded.
    int start(const std::string &filename);

    /// Ends the record. Without it the record ends with the process.
    void stop();

    bool isRecording() const { return writer != nullptr; }

    // Called by the engine.

    /// Before the settings are read, which belong to the record.
    void prepare();

    /// After they were read: goes on into that file; "" for none.
    void begin(const std::string &filename);

    void endStep();

    /// The game has ended, and perhaps the process.
    void endGame();

  private:
    Recorder() = default;

    int open(const std::string &filename, bool is_game_running);
    void close(const char *why);

    std::string name;
    std::unique_ptr<RecordWriter> writer;
    std::unique_ptr<WorldState> state;
};

} // namespace sv
