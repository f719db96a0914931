/// Plays a record: what comes from outside comes from there, and the game does again what it did.
/// After each step its world can be compared with the recorded one.
///
/// Game-loop thread only.
#pragma once

#include "selvane/input/InputSource.h"
#include "selvane/record/RecordedGame.h"

#include <functional>
#include <memory>
#include <string>

namespace sv {

/// How a replay has ended.
struct ReplayVerdict {
    int steps = 0;           ///< That were played, and were the same.
    bool is_same = true;     ///< False: the next step differs.
    bool is_at_exit = false; ///< Whether it has ended with the process, which is ending now.
    std::string text = {};   ///< "1,204 steps, all the same", or which step differs, and how.
    /// Which files, settings and version are not as recorded; empty if all are.
    std::string changes = {};
};

struct ReplayOptions {
    bool is_checked = true; ///< Whether a step that differs ends the replay.
    bool is_fast = false;   ///< Without pauses between the steps.
    /// Ends after that many steps, from 1; 0: with the record.
    int last_step = 0;
    /// Called after each step that was the same, with its number from 1.
    std::function<void(int)> after_step = {};
    /// Called with what a person does meanwhile: the game gets the record's input only.
    std::function<void(const InputItem &)> at_input = {};
    /// Called when the replay has ended, in a step or at the end of the process. From then on
    /// everything comes live again.
    std::function<void(const ReplayVerdict &)> at_end = {};
};

class Replayer {
  public:
    static Replayer &getInstance();

    /// Begins here, in a handler or between two runs, where the record was begun. Ends a record
    /// that the game has begun to write or to play. 0, or -1 with a line in the log: the file is no
    /// record of this engine, or the settings have the whole game recorded or played.
    int start(const std::string &filename, const ReplayOptions &new_options = {});

    /// Ends it before its end.
    void stop();

    /// Ends it with the current step, as if the record ended there.
    void endWithStep() { options.last_step = steps + 1; }

    bool isReplaying() const { return record != nullptr; }

    // Called by the engine.

    void endStep();

    /// The game has ended, and the process with it or not.
    void endGame(bool is_at_exit = false);

  private:
    Replayer() = default;

    using Next = RecordedGame::Next;

    int refuse(const std::string &filename);
    void loadNext();
    std::string difference();
    void finish(bool is_same, const std::string &what, bool is_at_exit = false);

    ReplayOptions options;
    std::unique_ptr<RecordedGame> record;
    std::unique_ptr<WorldState> actual;
    Next after = Next::STEP; // What the record has after the steps played so far.
    int steps = 0;
    int started = 0; // Records, so far.
};

} // namespace sv
