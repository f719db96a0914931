/// The answers from outside in one step, each channel's in their order. Recording puts them on the
/// tape, and replaying takes them off it.
///
/// Equal answers in a row take the place of one: a game asks for the time thousands of times in a
/// step, and gets a few different answers.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sv {

/// What comes from outside. Record files have them in this order.
enum class Channel { CLOCK, SEED, CONFIG, FILES, INPUT, NETWORK };
inline constexpr std::size_t CHANNEL_COUNT = 6;

class Tape {
  public:
    void put(Channel channel, std::int64_t answer);
    void putText(Channel channel, std::string text);

    /// The next answer; -1 on an empty tape.
    std::int64_t take(Channel channel);

    /// The next time, in microseconds. On an empty tape a clock goes on, a millisecond each time:
    /// a game that does otherwise than recorded may wait for it.
    std::int64_t takeTime();

    /// Empty on an empty tape.
    std::string takeText(Channel channel);

    /// The first channel of which more or fewer answers were taken than were put; none if all are
    /// used up.
    std::optional<Channel> findMismatch() const;

    void clear() { *this = {}; }

    /// As bytes, for a file.
    std::string pack() const;

    /// Reads what pack() wrote, and removes it from the front of `bytes`; false if it is not that.
    bool unpack(std::string_view &bytes);

  private:
    struct Run {
        std::int64_t answer = 0;
        std::uint64_t count = 0;
    };

    struct Answers {
        std::vector<Run> runs;
        std::vector<std::string> texts;
        std::size_t next_run = 0;
        std::uint64_t taken = 0; // Of the next run.
        std::size_t next_text = 0;
        std::int64_t overdrawn = 0;

        bool isUsedUp() const {
            return overdrawn == 0 && next_run == runs.size() && next_text == texts.size();
        }
    };

    Answers &answersOf(Channel channel) { return answers[static_cast<std::size_t>(channel)]; }
    static bool unpack(std::string_view &bytes, Answers &into);

    std::array<Answers, CHANNEL_COUNT> answers;
};

} // namespace sv
