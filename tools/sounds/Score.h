/// What the sounds are made from: instruments, the parts they play, and pieces of parts.
///
/// Plain data in whole numbers, so that every machine renders the same samples. The tables
/// themselves are in instruments.h and score.cpp.
#pragma once

#include <array>
#include <span>
#include <string_view>

namespace sounds {

constexpr int SAMPLES_PER_SECOND = 22050;
constexpr int STEPS_IN_A_BEAT = 4;
constexpr int STEPS_IN_A_BAR = 16;
constexpr int ECHO_STEPS = 3; ///< How much later an echo comes.

/// How strong each harmonic is, the fundamental first; only their proportions count.
using Harmonics = std::array<int, 16>;

/// How one note sounds, from its attack to its last echo. Times are milliseconds.
struct Instrument {
    std::string_view x = {}; ///< The note that an "x" in a bar stands for; a drum has one.

    Harmonics harmonics = {1};
    int mellow = 0;  ///< Time constant in which the overtones fade; 0: they stay.
    int detune = 0;  ///< Cents by which a second voice is higher; 0: there is none.
    int vibrato = 0; ///< Cents to either side, at VIBRATO_PER_SECOND.

    int attack = 5;    ///< Until the note is at its loudest.
    int decay = 100;   ///< Time constant of the fall to `sustain`.
    int sustain = 100; ///< Percent of the loudest, for as long as the note is held.
    int release = 60;  ///< Time constant of the fall after that.

    int sweep = 0;      ///< Percent of its pitch by which a note begins higher.
    int sweep_time = 1; ///< Time constant of the fall to its pitch.

    int noise = 0;           ///< Percent of the sound that is noise.
    int noise_above = 0;     ///< Hertz: the lower edge of the noise,
    int noise_below = 11000; ///< and the upper one; both are soft.
};

/// One instrument's line through a piece: bars of STEPS_IN_A_BAR words, repeated if the piece is
/// longer. A word is
///   c4, f#3, bb2   a note (c4 is middle C), a4c5e5 several at once;
///   x              the instrument's own note;
///   -              the note before is held;
///   .              silence.
/// A note followed by ! is louder, by ? softer.
struct Part {
    const Instrument *instrument;
    int volume; ///< Percent, relative to the piece's other parts.
    int echo;   ///< Percent of it that goes into the echo.
    std::span<const std::string_view> bars;
};

/// One sound file.
struct Piece {
    std::string_view file; ///< From the top of the tree.
    bool loops; ///< What rings beyond its end goes on at its beginning; else it fades out.
    int beats_per_minute;
    int bars;
    int echo_feedback; ///< Percent of an echo that echoes again, 0 to 90.
    int peak;          ///< Percent of full scale that its loudest sample reaches, below 100.
    std::span<const Part> parts;
};

/// Every sound of the game and of the examples.
std::span<const Piece> score();

} // namespace sounds
