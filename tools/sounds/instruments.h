/// The instruments of the score. Change a number, run make_sounds, and listen.
#pragma once

#include "sounds/Score.h"

namespace sounds {

// Tones.

/// A music box: a strike that rings out.
inline constexpr Instrument bell = {.harmonics = {100, 24, 10, 34, 3, 12, 0, 8},
                                    .mellow = 130,
                                    .attack = 3,
                                    .decay = 380,
                                    .sustain = 0,
                                    .release = 320};
/// A choir of strings far away.
inline constexpr Instrument pad = {.harmonics = {100, 42, 26, 12, 8, 4, 2},
                                   .detune = 9,
                                   .attack = 350,
                                   .decay = 800,
                                   .sustain = 80,
                                   .release = 420};
inline constexpr Instrument flute = {.harmonics = {100, 24, 22, 8, 9, 3, 3},
                                     .detune = 5,
                                     .vibrato = 10,
                                     .attack = 35,
                                     .decay = 400,
                                     .sustain = 70,
                                     .release = 200};
inline constexpr Instrument soft_bass = {
    .harmonics = {100, 50, 20, 8, 3}, .attack = 12, .decay = 600, .sustain = 50, .release = 150};
/// A sawtooth that turns mellow after each attack.
inline constexpr Instrument drive_bass = {
    .harmonics = {100, 90, 66, 50, 40, 33, 28, 24, 20, 17, 14, 12, 10, 8, 6, 4},
    .mellow = 110,
    .detune = 8,
    .attack = 3,
    .decay = 140,
    .sustain = 35,
    .release = 35};
inline constexpr Instrument pluck = {.harmonics = {100, 20, 45, 12, 28, 8, 18, 5, 12, 3, 8},
                                     .mellow = 110,
                                     .detune = 6,
                                     .attack = 2,
                                     .decay = 150,
                                     .sustain = 0,
                                     .release = 90};
inline constexpr Instrument brass = {.harmonics = {100, 78, 58, 42, 30, 22, 15, 10, 7, 4, 2},
                                     .mellow = 450,
                                     .detune = 8,
                                     .vibrato = 9,
                                     .attack = 14,
                                     .decay = 350,
                                     .sustain = 65,
                                     .release = 110};

// Drums.

inline constexpr Instrument kick = {.x = "a1",
                                    .harmonics = {100, 18, 6},
                                    .attack = 1,
                                    .decay = 85,
                                    .sustain = 0,
                                    .release = 40,
                                    .sweep = 350,
                                    .sweep_time = 16};
inline constexpr Instrument snare = {.x = "g3",
                                     .harmonics = {100, 30, 15},
                                     .attack = 1,
                                     .decay = 62,
                                     .sustain = 0,
                                     .release = 40,
                                     .sweep = 60,
                                     .sweep_time = 12,
                                     .noise = 72,
                                     .noise_above = 900,
                                     .noise_below = 6500};
inline constexpr Instrument hat = {.x = "c5",
                                   .attack = 1,
                                   .decay = 20,
                                   .sustain = 0,
                                   .release = 15,
                                   .noise = 100,
                                   .noise_above = 5500};
inline constexpr Instrument open_hat = {.x = "c5",
                                        .attack = 1,
                                        .decay = 75,
                                        .sustain = 0,
                                        .release = 40,
                                        .noise = 100,
                                        .noise_above = 5000};
inline constexpr Instrument tom = {.x = "d3",
                                   .harmonics = {100, 25, 10},
                                   .attack = 1,
                                   .decay = 120,
                                   .sustain = 0,
                                   .release = 80,
                                   .sweep = 70,
                                   .sweep_time = 30,
                                   .noise = 8,
                                   .noise_below = 3000};
/// A wooden clock.
inline constexpr Instrument tick = {.x = "g5",
                                    .harmonics = {100, 0, 30, 0, 12},
                                    .mellow = 8,
                                    .attack = 1,
                                    .decay = 16,
                                    .sustain = 0,
                                    .release = 12,
                                    .sweep = 20,
                                    .sweep_time = 4};

// The shot.

inline constexpr Instrument zap = {.x = "e3",
                                   .harmonics = {100, 40, 30, 15, 10, 5},
                                   .mellow = 35,
                                   .attack = 1,
                                   .decay = 60,
                                   .sustain = 0,
                                   .release = 60,
                                   .sweep = 500,
                                   .sweep_time = 38};
inline constexpr Instrument burst = {.x = "c4",
                                     .attack = 1,
                                     .decay = 32,
                                     .sustain = 0,
                                     .release = 30,
                                     .noise = 100,
                                     .noise_above = 200,
                                     .noise_below = 3500};

} // namespace sounds
