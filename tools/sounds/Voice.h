/// One note of one instrument, sample by sample.
#pragma once

#include "sounds/Score.h"
#include "sounds/Waveform.h"
#include "sounds/notes.h"

#include <cstdint>

namespace sounds {

/// The highest level of an envelope.
constexpr std::int64_t FULL_LEVEL = std::int64_t{1} << 30;

/// The rise and fall of a note's loudness.
class Envelope {
  public:
    /// `held` is how many samples the note is held.
    Envelope(const Instrument &instrument, int held);

    /// The level at the next sample, 0 to FULL_LEVEL.
    std::int64_t next();

    /// Whether the note has become too soft to hear.
    bool isOver() const;

  private:
    std::int64_t attack; // Rise per sample.
    std::int64_t decay;  // Samples.
    std::int64_t release;
    std::int64_t sustain;
    std::int64_t level = 0;
    int left; // Samples until the note is released.
    bool is_rising = true;
};

/// Noise between two frequencies, the same for the same seed.
class Noise {
  public:
    Noise(const Instrument &instrument, std::uint32_t seed);

    /// The next sample, about -32768 to 32767.
    std::int64_t next();

  private:
    std::uint32_t state;
    std::int64_t low_cut; // Filter coefficients, of 2^15.
    std::int64_t high_cut;
    std::int64_t low = 0;
    std::int64_t smooth = 0;
};

class Voice {
  public:
    /// `held` is how many samples the note is held. Keeps a reference to the instrument.
    Voice(const Instrument &of, const Note &note, int held);

    /// The next sample, 32767 being the loudest that a note of normal loudness gets.
    std::int64_t next();
    bool isOver() const { return envelope.isOver(); }

  private:
    Phase bentStep();
    std::int64_t waveAt(Phase at) const;
    std::int64_t tone();

    const Instrument &instrument;
    Phase step;
    Waveform bright;
    Waveform mellow;
    Envelope envelope;
    Noise noise;
    int loudness;
    Phase phase = 0;
    Phase second_phase = 0;
    Phase vibrato_phase = 0;
    std::int64_t brightness = FULL_LEVEL;
    std::int64_t sweep = FULL_LEVEL;
    std::int64_t vibrato = 0;
};

} // namespace sounds
