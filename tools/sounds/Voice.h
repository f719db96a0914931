/// One note of one instrument, sample by sample.
#pragma once

#include "sounds/Score.h"
#include "sounds/Waveform.h"
#include "sounds/notes.h"

#include <cstdint>

namespace sounds {

/// The level of an envelope at its highest.
constexpr std::int64_t FULL_LEVEL = std::int64_t{1} << 30;

/// The rise and fall of a note's loudness.
class Envelope {
  public:
    /// Of a note that is held for that many samples.
    Envelope(const Instrument &instrument, int held);

    /// The level at the next sample, 0 to FULL_LEVEL.
    std::int64_t next();

    /// True once the note cannot be heard any more.
    bool isOver() const;

  private:
    std::int64_t attack; // What the level rises by in a sample.
    std::int64_t decay;  // Samples.
    std::int64_t release;
    std::int64_t sustain;
    std::int64_t level = 0;
    int left; // Samples until the note is let go.
    bool is_rising = true;
};

/// Noise, from the same seed the same, between two frequencies.
class Noise {
  public:
    Noise(const Instrument &instrument, std::uint32_t seed);

    /// The next sample, within -32768 and 32767 or a little beyond.
    std::int64_t next();

  private:
    std::uint32_t state;
    std::int64_t low_cut; // How far a filter follows in a sample, 2^15 being all the way.
    std::int64_t high_cut;
    std::int64_t low = 0;
    std::int64_t smooth = 0;
};

class Voice {
  public:
    /// Of a note that is held for that many samples. Keeps the reference to the instrument.
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
