/// Where the time of a step goes, averaged over half a second. Game-loop thread only.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace sv {

/// What a step is made of; the loop has some of them twice.
enum class Piece { EVENTS, WORLD, DRAWING, PATHS, SLEEP };
inline constexpr std::size_t PIECE_COUNT = 5;

class StepTimes {
  public:
    /// What has passed since the last call is nobody's.
    void skip();

    /// The time since the last call was that piece's. A step ends with SLEEP.
    void end(Piece piece);

    /// Steps a second.
    float getRate() const { return rate; }
    /// Milliseconds a step.
    float getTime(Piece piece) const { return times[static_cast<std::size_t>(piece)]; }

  private:
    void average();

    std::int64_t last = 0; // Microseconds, as all that follow.
    std::array<std::int64_t, PIECE_COUNT> sums{};
    int steps = 0;
    float rate = 0;
    std::array<float, PIECE_COUNT> times{};
};

} // namespace sv
