/// A record, read step by step: what came from outside in a step, and the world at its end. For the
/// replay, and for a game that shows the ghost of an earlier one.
#pragma once

#include "selvane/outside/Tape.h"
#include "selvane/record/RecordFile.h"
#include "selvane/record/WorldState.h"

#include <string>
#include <utility>

namespace sv {

class RecordedGame {
  public:
    /// What came next in the file: a step, the end of the recording, the end of the process, the
    /// end of a file that is cut, or something damaged. After a step more may come.
    enum class Next { STEP, STOP, EXIT, CUT, DAMAGE };

    /// Opens it, with the world as it was when the record began.
    explicit RecordedGame(const std::string &filename);

    /// Whether it is a record of this version's format.
    bool isOpen() const { return problem == nullptr; }
    /// Why it is not open, as the end of a sentence; null if it is.
    const char *getProblem() const { return problem; }

    /// The engine's version that wrote it.
    const std::string &getVersion() const { return version; }
    /// Whether it was begun by a game that ran already, and not by the engine's start.
    bool isOfRunningGame() const { return is_of_running_game; }

    /// Reads on. The tape and the world then are those of that step.
    Next next();
    Tape takeTape() { return std::move(tape); }
    const WorldState &getWorld() const { return world; }

  private:
    RecordReader reader;
    Tape tape;
    WorldState world;
    std::string version;
    bool is_of_running_game = false;
    const char *problem = nullptr;
};

} // namespace sv
