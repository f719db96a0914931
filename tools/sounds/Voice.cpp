#include "sounds/Voice.h"

#include <algorithm>

namespace sounds {

namespace {

constexpr std::int64_t INAUDIBLE = FULL_LEVEL >> 12;
constexpr std::int64_t VIBRATO_RISE = 400; // Milliseconds until a vibrato is at its widest.
constexpr Phase VIBRATO_STEP = (Phase{1} << 31) / SAMPLES_PER_SECOND * 10; // Five a second.
constexpr std::int64_t CENTS_OF_E = 1731; // 1200 / ln 2: for small steps, a cent is 1 / 1731.

std::int64_t samples(std::int64_t milliseconds) {
    return std::max<std::int64_t>(1, milliseconds * SAMPLES_PER_SECOND / 1000);
}

// Coefficient of a one-pole filter, of 2^15: f / (f + rate / 2 pi).
std::int64_t cutoff(std::int64_t hertz) {
    return (hertz << 15) / (hertz + SAMPLES_PER_SECOND * 1000 / 6283);
}

} // namespace

Envelope::Envelope(const Instrument &instrument, int held)
    : attack(FULL_LEVEL / samples(instrument.attack)), decay(samples(instrument.decay)),
      release(samples(instrument.release)), sustain(FULL_LEVEL * instrument.sustain / 100),
      left(held) {}

std::int64_t Envelope::next() {
    if (left-- <= 0) {
        is_rising = false;
        level -= level / release;
    } else if (is_rising) {
        level = std::min(level + attack, FULL_LEVEL);
        is_rising = level < FULL_LEVEL;
    } else {
        level -= (level - sustain) / decay;
    }
    return level;
}

bool Envelope::isOver() const {
    return !is_rising && level < INAUDIBLE;
}

Noise::Noise(const Instrument &instrument, std::uint32_t seed)
    : state(seed * 2654435769U + 1), low_cut(cutoff(instrument.noise_above)),
      high_cut(cutoff(instrument.noise_below)) {}

std::int64_t Noise::next() {
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    const std::int64_t white = std::int64_t{state >> 16} - 32768;
    smooth += (white - smooth) * high_cut / (1 << 15);
    low += (smooth - low) * low_cut / (1 << 15);
    return smooth - low;
}

Voice::Voice(const Instrument &of, const Note &note, int held)
    : instrument(of), step(phaseStep(note.pitch)), bright(of.harmonics, step, false),
      mellow(of.harmonics, step, true), envelope(of, held),
      noise(of, static_cast<std::uint32_t>(note.start + 1)), loudness(note.loudness) {}

std::int64_t Voice::next() {
    const std::int64_t level = envelope.next() >> 15;
    std::int64_t sample = 0;
    if (instrument.noise < 100)
        sample += tone() * (100 - instrument.noise);
    if (instrument.noise > 0)
        sample += noise.next() * instrument.noise;
    return (sample / 100 * level >> 15) * loudness / 100;
}

/// The current phase step, with sweep and vibrato.
Phase Voice::bentStep() {
    std::int64_t bent = step;
    if (instrument.sweep > 0) {
        bent += std::int64_t{step} * instrument.sweep / 100 * (sweep >> 15) >> 15;
        sweep -= sweep / samples(instrument.sweep_time);
    }
    if (instrument.vibrato > 0) {
        vibrato = std::min(vibrato + FULL_LEVEL / samples(VIBRATO_RISE), FULL_LEVEL);
        vibrato_phase += VIBRATO_STEP;
        const std::int64_t cents = instrument.vibrato * (vibrato >> 15);
        bent += std::int64_t{step} / CENTS_OF_E * (cents * sine(vibrato_phase) >> 15) >> 15;
    }
    return static_cast<Phase>(bent);
}

/// The wave at that phase, mixed from its bright and its mellow form.
std::int64_t Voice::waveAt(Phase at) const {
    const std::int64_t soft = mellow.at(at);
    return soft + ((bright.at(at) - soft) * (brightness >> 15) >> 15);
}

std::int64_t Voice::tone() {
    const Phase now = bentStep();
    phase += now;
    std::int64_t sample = waveAt(phase);
    if (instrument.detune > 0) {
        second_phase += now + static_cast<Phase>(now / CENTS_OF_E * instrument.detune);
        sample = (sample + waveAt(second_phase)) / 2;
    }
    if (instrument.mellow > 0)
        brightness -= brightness / samples(instrument.mellow);
    return sample;
}

} // namespace sounds
