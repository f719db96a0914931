/// One period of a tone, and the frequencies of the notes. Whole numbers only.
#pragma once

#include "sounds/Score.h"

#include <array>
#include <cstdint>

namespace sounds {

/// A turn is 2^32, so a phase wraps around by overflow.
using Phase = std::uint32_t;

/// How far a note's phase advances per sample. `pitch` is in semitones above c0.
Phase phaseStep(int pitch);

/// A sine, 32767 at a quarter of a turn.
int sine(Phase phase);

/// One period of a sum of harmonics, 32767 at its peak. Harmonics too high for the sample rate are
/// left out, since they would alias.
class Waveform {
  public:
    /// For notes of that phase step. The mellow form divides each harmonic by its number.
    Waveform(const Harmonics &harmonics, Phase phase_step, bool is_mellow);

    int at(Phase phase) const;

  private:
    static constexpr int INDEX_BITS = 10;

    std::array<int, (1 << INDEX_BITS) + 1> values{}; // The first value again at the end.
};

} // namespace sounds
