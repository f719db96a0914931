/// The one door through which everything comes that a game cannot compute: the time, the seed of
/// the random numbers, the settings, the files, input, and what the network brings. The engine asks
/// here, and gets the answer of the moment. A recorder writes the answers down as well, and while a
/// record is played they are those of the record.
///
/// Whoever gives the engine another source of chance makes it ask here. Game-loop thread only.
#pragma once

#include "selvane/outside/Tape.h"

#include <concepts>
#include <functional>
#include <string>
#include <vector>

namespace sv {

class Outside {
  public:
    enum class Mode { LIVE, RECORDING, REPLAYING };

    static Outside &getInstance();

    Mode getMode() const { return mode; }
    bool isReplaying() const { return mode == Mode::REPLAYING; }

    /// What `live()` returns, or returned when the game was recorded.
    template<std::invocable Live>
    std::invoke_result_t<Live> ask(Channel channel, Live live) {
        using Answer = std::invoke_result_t<Live>;
        if (mode == Mode::REPLAYING)
            return static_cast<Answer>(tape.take(channel));
        const Answer answer = live();
        if (mode == Mode::RECORDING)
            tape.put(channel, static_cast<std::int64_t>(answer));
        return answer;
    }

    /// The same for a text, `now`.
    std::string askText(Channel channel, const std::string &now);

    /// A file was loaded, or could not be: its name as the game knows it, and the path where it was
    /// found. A file that is not the one of the record is among getChanges().
    void noteFile(const std::string &name, const std::string &path);

    /// The same for a text that is there at the time, under a name for people. The recorded text.
    std::string askChangeable(const std::string &name, const std::string &now);

    /// What is not as it was recorded, in words.
    void noteChange(const std::string &what) { changes.push_back(what); }
    const std::vector<std::string> &getChanges() const { return changes; }

    /// Blocks for that many milliseconds, unless a record is played as fast as it goes.
    void sleep(int milliseconds) const;

    // Called by the engine's recorder.

    /// Empties the tape too. `new_is_fast`: sleep() does not block.
    void setMode(Mode new_mode, bool new_is_fast = false);

    /// What goes through the door; recording takes it after each step, and replaying fills it
    /// before.
    Tape &getTape() { return tape; }

  private:
    Outside() = default;

    Mode mode = Mode::LIVE;
    bool is_fast = false;
    Tape tape;
    std::vector<std::string> changes;
};

} // namespace sv
