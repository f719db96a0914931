/// One period of a tone, and the frequencies of the notes. Whole numbers all through.
#pragma once

#include "sounds/Score.h"

#include <array>
#include <cstdint>

namespace sounds {

/// A turn is 2^32: a phase begins anew by running over.
using Phase = std::uint32_t;

/// The phase that a note goes on by in one sample.
Phase phaseStep(int pitch);

/// A sine, 32767 at a quarter of a turn.
int sine(Phase phase);

/// One period of a sum of harmonics, 32767 at its peak. Harmonics that would be too high for the
/// sample rate are left out: they would come back as other, false tones.
class Waveform {
  public:
    /// For notes of that phase step. The mellow form of a tone has each harmonic weakened by its
    /// number.
    Waveform(const Harmonics &harmonics, Phase phase_step, bool is_mellow);

    int at(Phase phase) const;

  private:
    static constexpr int INDEX_BITS = 10;

    std::array<int, (1 << INDEX_BITS) + 1> values{}; // The first one stands at the end again.
};

} // namespace sounds
