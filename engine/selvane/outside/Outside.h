/// The one door through which everything comes that a game cannot compute: the time, the seed of
/// the random numbers, the settings, the files, input, and what the network brings. The engine asks
/// here, and gets the answer of the moment. A recorder writes the answers down as well, and while a
/// record is played they are those of the record.
///
/// Whoever gives the engine another source of chance makes it ask here. Game-loop thread only,
/// except for the time, which other threads get live.
#pragma once

#include "selvane/outside/Tape.h"

#include <atomic>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <thread>
#include <type_traits>
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

    /// The time in microseconds, of which `live()` is the present one. Where a record begins or
    /// ends to be played, the time goes on from what it was before.
    std::uint32_t askTime(std::uint32_t (*live)());

    /// `now`, or the text that was there instead when the game was recorded.
    std::string askText(Channel channel, const std::string &now);

    /// A file was loaded, or could not be: its name as the game knows it, and the path where it was
    /// found. A file that is not the one of the record is among getChanges().
    void noteFile(const std::string &name, const std::string &path);

    /// As askText(). If the two differ, `name`, as people call it, is among getChanges().
    std::string askChangeable(const std::string &name, const std::string &now);

    /// What is not as it was recorded, in words.
    void noteChange(const std::string &what) { changes.push_back(what); }
    const std::vector<std::string> &getChanges() const { return changes; }

    /// Blocks for that many milliseconds, unless a record is played as fast as it goes.
    void sleep(int milliseconds);

    // Called by the engine's display and desk. Nobody who asks for the time can tell that it stood
    // still or went slower or faster: a record made meanwhile is as any other.

    /// The last `milliseconds` do not count.
    void holdBack(std::int64_t milliseconds);

    /// A millisecond of sleep() takes that many.
    void setStretch(double new_stretch) { stretch = new_stretch; }

    // Called by the engine's recorder.

    /// The game loop runs in this thread from here on.
    void takeThread() { recorded_thread = std::this_thread::get_id(); }

    /// Empties the tape too. `new_is_fast`: sleep() does not block.
    void setMode(Mode new_mode, bool new_is_fast = false);

    /// What goes through the door; recording takes it after each step, and replaying fills it
    /// before.
    Tape &getTape() { return tape; }

  private:
    Outside() = default;

    std::uint32_t askRecordedTime(std::uint32_t (*live)());

    std::atomic<Mode> mode = Mode::LIVE;
    std::thread::id recorded_thread;
    bool is_fast = false;
    double stretch = 1;
    Tape tape;
    // Added to the time, so that it goes on from one mode to the next.
    std::atomic<std::uint32_t> live_shift = 0;
    std::uint32_t recorded_shift = 0;
    std::optional<std::uint32_t> last_recorded_time; // Shifted; none once the live time was told.
    bool is_joining = false;                         // Until the record tells its first time.
    std::vector<std::string> changes;
};

} // namespace sv
