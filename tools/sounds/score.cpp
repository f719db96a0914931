#include "sounds/Score.h"

#include "sounds/instruments.h"

namespace sounds {

namespace {

using Bars = std::string_view;

constexpr Bars silence = ". . . . . . . . . . . . . . . .";
constexpr Bars held = "- - - - - - - - - - - - - - - -";

// A shot: a falling tone, a crack, and a thump under both.

constexpr Bars one_x[] = {"x - - - - - - - . . . . . . . ."};
constexpr Part shoot[] = {
    {&zap, 70, 30, one_x},
    {&burst, 90, 20, one_x},
    {&kick, 60, 0, one_x},
};

// The game won: up through C major to a chord that stays.

constexpr Bars levelup_lead[] = {
    "g4 - c5 - e5 - g5! - - . e5 - g5 - - .",
    "c6! - - - - - - - - - - - . . . .",
};
constexpr Bars levelup_chords[] = {
    "e4g4 - - . c4e4 - - . e4g4c5 - - . f4a4d5 - - .",
    "e4g4c5! - - - - - - - - - - - . . . .",
};
constexpr Bars levelup_bells[] = {
    silence,
    "c5 e5 g5 c6 e6 g6? . . . . . . . . . .",
};
constexpr Bars levelup_bass[] = {
    "c3 - - - c3 - - - a2 - - - g2 - - -",
    "c2! - - - - - - - - - - . . . . .",
};
constexpr Bars levelup_drums[] = {
    "x . . . x . . . x . . . x . x x",
    "x! . . . . . . . . . . . . . . .",
};
constexpr Part levelup[] = {
    {&brass, 60, 25, levelup_lead}, {&brass, 30, 20, levelup_chords},
    {&bell, 45, 40, levelup_bells}, {&soft_bass, 60, 0, levelup_bass},
    {&tom, 40, 10, levelup_drums},
};

// The game lost: down to a low A minor.

constexpr Bars game_over_lead[] = {"e5! - - d5 - - b4 - - a4! - - - - . ."};
constexpr Bars game_over_chords[] = {"a3c4e4 - - f3a3d4 - - e3g#3b3 - - a2c3e3a3! - - - - . ."};
constexpr Bars game_over_bass[] = {"a2 - - d2 - - e2 - - a1! - - - - - ."};
constexpr Bars game_over_drums[] = {"x . . x . . x . . x! . . . . . ."};
constexpr Part game_over[] = {
    {&brass, 55, 25, game_over_lead},
    {&brass, 30, 20, game_over_chords},
    {&drive_bass, 60, 0, game_over_bass},
    {&kick, 60, 0, game_over_drums},
};

// The title: nobody is in a hurry yet. Its first notes, up a chord and one step back, are the tune
// of the levels too.

constexpr Bars menu_tune[] = {
    ". . . . a4 - c5 - e5 - - - - - d5 -", // F
    "b4 - - - - - - - . . g4 - a4 - b4 -", // Em
    "c5 - - - - - a4 - f4 - - - a4 - - -", // Dm
    "g4 - - - - - - - e4 - - - - - . .",   // Am
    ". . . . a4 - c5 - e5 - - - - - f5 -", // F
    "g5 - - - - - e5 - d5 - - - b4 - - -", // G
    "c5 - - - - - d5 - e5 - - - b4 - - -", // C
    "d5 - - - - - c5 - b4 - - - - - . .",  // G
};
constexpr Bars menu_bells[] = {
    "f4 . c5 . a4 . e5 . c5 . a4 . e5 . c5 .", "e4 . b4 . g4 . d5 . b4 . g4 . d5 . b4 .",
    "d4 . a4 . f4 . c5 . a4 . f4 . c5 . a4 .", "a4 . e5 . c5 . g5 . e5 . c5 . g5 . e5 .",
    "f4 . c5 . a4 . e5 . c5 . a4 . e5 . c5 .", "g4 . d5 . b4 . e5 . d5 . b4 . e5 . d5 .",
    "c4 . g4 . e4 . b4 . g4 . e4 . b4 . g4 .", "g4 . d5 . c5 . d5 . g4 . d5 . b4 . d5 .",
};
constexpr Bars menu_chords[] = {
    "f3a3c4e4 - - - - - - - - - - - - - - -", "e3g3b3d4 - - - - - - - - - - - - - - -",
    "d3f3a3c4 - - - - - - - - - - - - - - -", "c3e3a3 - - - - - - - - - - - - - - -",
    "f3a3c4e4 - - - - - - - - - - - - - - -", "d3g3b3e4 - - - - - - - - - - - - - - -",
    "c3g3b3e4 - - - - - - - - - - - - - - -", "d3g3c4 - - - - - - - d3g3b3 - - - - - - -",
};
constexpr Bars menu_bass[] = {
    "f2 - - - - - - . f2 - c3 - - - . .", "e2 - - - - - - . e2 - b2 - - - . .",
    "d2 - - - - - - . d2 - a2 - - - . .", "a2 - - - - - - . a2 - e2 - - - . .",
    "f2 - - - - - - . f2 - c3 - - - . .", "g2 - - - - - - . g2 - d3 - - - . .",
    "c3 - - - - - - . c3 - g2 - - - . .", "g2 - - - - - - . g2 - d2 - - - . .",
};
constexpr Part menus[] = {
    {&flute, 46, 35, menu_tune},
    {&bell, 38, 45, menu_bells},
    {&pad, 17, 20, menu_chords},
    {&soft_bass, 40, 0, menu_bass},
};

// Drums of all levels.

constexpr Bars four_kicks[] = {"x . . . x . . . x . . . x . . ."};
constexpr Bars off_beats[] = {". . x . . . x . . . x . . . x ."};
constexpr Bars clock_ticks[] = {"g5 . . . d5? . . . g5 . . . d5? . . ."};

// Level 1, A minor: a clock, a pulse, and little else.

constexpr Bars lv1_bass[] = {
    "a1! . a1 . a2? . a1 . a1! . a1 . a2? . g1 .", "a1! . a1 . a2? . a1 . a1! . a1 . c2 . e2? .",
    "f1! . f1 . f2? . f1 . f1! . f1 . f2? . f1 .", "g1! . g1 . g2? . g1 . g1! . g1 . b1 . g1 .",
    "a1! . a1 . a2? . a1 . a1! . a1 . a2? . b1 .", "c2! . c2 . c3? . c2 . c2! . c2 . c3? . c2 .",
    "d2! . d2 . d3? . d2 . d2! . d2 . d3? . d2 .", "e2! . e2 . e3? . e2 . e2! . e2 . g#2? . b1 .",
};
constexpr Bars lv1_plucks[] = {
    "a4! . . e4 . . c5! . . e4 . . b4 . a4 .", "a4! . . e4 . . c5! . . e4 . . d5 . c5 .",
    "a4! . . f4 . . c5! . . f4 . . b4 . a4 .", "b4! . . g4 . . d5! . . g4 . . c5 . b4 .",
    "a4! . . e4 . . c5! . . e4 . . b4 . a4 .", "c5! . . g4 . . e5! . . g4 . . d5 . c5 .",
    "a4! . . f4 . . d5! . . f4 . . e5 . d5 .", "b4! . . g#4 . . d5! . . g#4 . . b4 . e4 .",
};
constexpr Bars lv1_chords[] = {
    "a2e3c4 - - - - - - - - - - - - - - -", held,
    "f3a3c4 - - - - - - - - - - - - - - -", "g3b3d4 - - - - - - - - - - - - - - -",
    "a3c4e4 - - - - - - - - - - - - - - -", "g3c4e4 - - - - - - - - - - - - - - -",
    "f3a3d4 - - - - - - - - - - - - - - -", "e3g#3d4 - - - - - - - e3g#3b3 - - - - - - -",
};
constexpr Bars lv1_tune[] = {
    silence,
    silence,
    silence,
    silence,
    "a4 - c5 - e5 - - - - - d5 - - - c5 -",
    "e5 - - - - - g4 - - - . . . . . .",
    "a4 - d5 - f5 - - - - - e5 - - - d5 -",
    "b4 - - - - - - - g#4 - - - . . . .",
};
constexpr Bars lv1_toms[] = {
    silence,
    silence,
    silence,
    ". . . . . . . . . . . . . x? . x",
};
constexpr Part background_lv1[] = {
    {&drive_bass, 48, 0, lv1_bass}, {&pluck, 46, 40, lv1_plucks}, {&pad, 17, 15, lv1_chords},
    {&flute, 46, 35, lv1_tune},     {&kick, 54, 0, four_kicks},   {&hat, 85, 0, off_beats},
    {&tick, 36, 25, clock_ticks},   {&tom, 40, 15, lv1_toms},
};

// Level 2, A minor: faster, with a snare, and the bass off the beat.

constexpr Bars lv2_bass[] = {
    "a1! . a1 a2? . a1 . a1 a1! . a2? a1 . a1 g1 .",
    "a1! . a1 a2? . a1 . a1 a1! . a2? a1 . b1 c2 .",
    "f1! . f1 f2? . f1 . f1 f1! . f2? f1 . f1 e1 .",
    "g1! . g1 g2? . g1 . g1 g1! . g2? g1 . a1 b1 .",
    "c2! . c2 c3? . c2 . c2 c2! . c3? c2 . c2 b1 .",
    "g1! . g1 g2? . g1 . g1 g1! . g2? g1 . g1 f1 .",
    "d2! . d2 d3? . d2 . d2 d2! . d3? d2 . d2 f2 .",
    "e2! . e2 e3? . e2 . e2 e2! . e3? e2 . b1 g#1 .",
};
constexpr Bars lv2_plucks[] = {
    "a4! e4 c5 e4 a4! e4 c5 e4 b4! e4 c5 e4 a4! e4 c5 e4",
    "a4! e4 c5 e4 a4! e4 c5 e4 d5! e4 c5 e4 b4! e4 c5 e4",
    "a4! f4 c5 f4 a4! f4 c5 f4 b4! f4 c5 f4 a4! f4 c5 f4",
    "b4! g4 d5 g4 b4! g4 d5 g4 c5! g4 d5 g4 b4! g4 d5 g4",
    "c5! g4 e5 g4 c5! g4 e5 g4 d5! g4 e5 g4 c5! g4 e5 g4",
    "b4! g4 d5 g4 b4! g4 d5 g4 a4! g4 d5 g4 b4! g4 d5 g4",
    "a4! f4 d5 f4 a4! f4 d5 f4 e5! f4 d5 f4 a4! f4 d5 f4",
    "b4! g#4 d5 g#4 b4! g#4 d5 g#4 e5! g#4 d5 g#4 b4! g#4 d5 g#4",
};
constexpr Bars lv2_chords[] = {
    "a3c4e4 - - - - - - - - - - - - - - -", held,
    "f3a3c4 - - - - - - - - - - - - - - -", "g3b3d4 - - - - - - - - - - - - - - -",
    "g3c4e4 - - - - - - - - - - - - - - -", "g3b3d4 - - - - - - - - - - - - - - -",
    "f3a3d4 - - - - - - - - - - - - - - -", "e3g#3d4 - - - - - - - e3g#3b3 - - - - - - -",
};
constexpr Bars lv2_tune[] = {
    "a4 - c5 - e5! - - - - - d5 - c5 - d5 -", "e5 - - - - - - - . . c5 - d5 - e5 -",
    "f5! - - - - - e5 - - - c5 - - - a4 -",   "b4 - - - - - d5 - - - - - . . . .",
    "c5 - e5 - g5! - - - - - f5 - e5 - f5 -", "d5 - - - - - - - . . b4 - c5 - d5 -",
    "f5! - - - - - e5 - - - d5 - - - c5 -",   "b4 - - - e5 - - - g#4 - - - - - . .",
};
constexpr Bars back_beats[] = {
    ". . . . x . . . . . . . x . . .",
    ". . . . x . . . . . . . x . . .",
    ". . . . x . . . . . . . x . . .",
    ". . . . x . . x? . . x? . x . x? x",
};
constexpr Bars lv2_hats[] = {"x . x? . x . x? x? x . x? . x . x? x?"};
constexpr Part background_lv2[] = {
    {&drive_bass, 48, 0, lv2_bass}, {&pluck, 32, 35, lv2_plucks}, {&pad, 17, 15, lv2_chords},
    {&brass, 34, 30, lv2_tune},     {&kick, 56, 0, four_kicks},   {&snare, 80, 12, back_beats},
    {&hat, 80, 0, lv2_hats},        {&tick, 24, 25, clock_ticks},
};

// Level 3, D minor: the fastest, the tune in two voices, and drums that do not rest.

constexpr Bars lv3_bass[] = {
    "d2! d2 d3? d2 d2 d2 d3? d2 d2! d2 d3? d2 d2 d2 c2 c2",
    "bb1! bb1 bb2? bb1 bb1 bb1 bb2? bb1 bb1! bb1 bb2? bb1 bb1 bb1 a1 g1",
    "f1! f1 f2? f1 f1 f1 f2? f1 f1! f1 f2? f1 f1 f1 g1 a1",
    "c2! c2 c3? c2 c2 c2 c3? c2 c2! c2 c3? c2 c2 c2 b1 c#2",
    "d2! d2 d3? d2 d2 d2 d3? d2 d2! d2 d3? d2 d2 d2 c2 c2",
    "bb1! bb1 bb2? bb1 bb1 bb1 bb2? bb1 bb1! bb1 bb2? bb1 bb1 bb1 a1 bb1",
    "g1! g1 g2? g1 g1 g1 g2? g1 g1! g1 g2? g1 g1 g1 g1 g#1",
    "a1! a1 a2? a1 a1 a1 a2? a1 a1! a1 a2? a1 c#2 c#2 e2 e2",
};
constexpr Bars lv3_plucks[] = {
    "d4! f4 a4 d5 a4! f4 d4 f4 a4! d5 a4 f4 d4! f4 a4 f4",
    "d4! f4 bb4 d5 bb4! f4 d4 f4 bb4! d5 bb4 f4 d4! f4 bb4 f4",
    "c4! f4 a4 c5 a4! f4 c4 f4 a4! c5 a4 f4 c4! f4 a4 f4",
    "c4! e4 g4 c5 g4! e4 c4 e4 g4! c5 g4 e4 c4! e4 g4 e4",
    "d4! f4 a4 d5 a4! f4 d4 f4 a4! d5 a4 f4 d4! f4 a4 f4",
    "d4! f4 bb4 d5 bb4! f4 d4 f4 bb4! d5 bb4 f4 d4! f4 bb4 f4",
    "d4! g4 bb4 d5 bb4! g4 d4 g4 bb4! d5 bb4 g4 d4! g4 bb4 g4",
    "c#4! e4 a4 c#5 a4! e4 c#4 e4 a4! c#5 a4 e4 g4! a4 c#5 e5",
};
constexpr Bars lv3_chords[] = {
    "a3d4f4 - - - - - - - - - - - - - - -",  "bb3d4f4 - - - - - - - - - - - - - - -",
    "a3c4f4 - - - - - - - - - - - - - - -",  "g3c4e4 - - - - - - - - - - - - - - -",
    "a3d4f4 - - - - - - - - - - - - - - -",  "bb3d4f4 - - - - - - - - - - - - - - -",
    "bb3d4g4 - - - - - - - - - - - - - - -", "a3c#4e4 - - - - - - - a3c#4g4 - - - - - - -",
};
constexpr Bars lv3_tune[] = {
    "d5! - f5 - a5! - - - - - g5 - f5 - g5 -",  "f5! - - - - - d5 - - - bb4 - d5 - f5 -",
    "a5! - - - g5 - f5 - - - c5 - f5 - a5 -",   "g5! - - - - - e5 - - - - - c5 - c#5 -",
    "d5! - f5 - a5! - - - - - bb5 - a5 - g5 -", "f5! - - - - - g5 - a5 - - - f5 - d5 -",
    "g5! - - - bb5 - - - a5 - g5 - f5 - d5 -",  "e5! - - - - - - - c#5! - - - e5 - . .",
};
constexpr Bars lv3_second[] = {
    "a4 - d5 - f5 - - - - - e5 - d5 - e5 -",  "d5 - - - - - bb4 - - - f4 - bb4 - d5 -",
    "f5 - - - e5 - c5 - - - a4 - c5 - f5 -",  "e5 - - - - - c5 - - - - - g4 - a4 -",
    "a4 - d5 - f5 - - - - - g5 - f5 - e5 -",  "d5 - - - - - d5 - f5 - - - d5 - bb4 -",
    "d5 - - - g5 - - - f5 - d5 - d5 - bb4 -", "c#5 - - - - - - - a4 - - - c#5 - . .",
};
constexpr Bars lv3_kicks[] = {
    "x! . . . x . . x? x! . . . x . . .",
    "x! . . . x . . x? x! . x? . x . . .",
};
constexpr Bars lv3_snares[] = {
    ". . . . x! . . . . x? . . x! . . x?",
    ". . . . x! . . . . x? . . x! . . .",
    ". . . . x! . . . . x? . . x! . . x?",
    ". . . . x! . . x? . x? x . x! x? x x!",
};
constexpr Bars lv3_hats[] = {"x x? x x? x x? x x? x x? x x? x x? x x?"};
constexpr Part background_lv3[] = {
    {&drive_bass, 46, 0, lv3_bass}, {&pluck, 30, 30, lv3_plucks}, {&pad, 17, 15, lv3_chords},
    {&brass, 36, 30, lv3_tune},     {&brass, 20, 25, lv3_second}, {&kick, 58, 0, lv3_kicks},
    {&snare, 80, 12, lv3_snares},   {&hat, 66, 0, lv3_hats},      {&open_hat, 50, 0, off_beats},
    {&tick, 18, 25, clock_ticks},
};

// The examples' sounds: a shot, an explosion, a coin, and a tune that goes up and down a minor
// scale.

constexpr Part shot[] = {{&zap, 70, 20, one_x}};
constexpr Bars two_x[] = {"x! - - x? - - . . . . . . . . . ."};
constexpr Part boom[] = {
    {&burst, 90, 40, two_x},
    {&kick, 80, 20, two_x},
    {&tom, 60, 30, one_x},
};
constexpr Bars coin_bells[] = {"b5 - e6! - - - - - - - - - . . . ."};
constexpr Part coin[] = {{&bell, 70, 20, coin_bells}};
constexpr Bars tune_lead[] = {
    "a4 - c5 - e5 - c5 - d5 - b4 - g4 - b4 -",
    "c5 - e5 - a5 - e5 - g5 - e5 - d5 - b4 -",
    "a4 - c5 - e5 - c5 - f5 - d5 - b4 - d5 -",
    "e5 - - - d5 - b4 - a4 - - - - - . .",
};
constexpr Bars tune_bass[] = {
    "a2 - - - a2 - - - g2 - - - g2 - - -",
    "a2 - - - c3 - - - g2 - - - e2 - - -",
    "f2 - - - f2 - - - d2 - - - g2 - - -",
    "e2 - - - e2 - - - a2 - - - - - . .",
};
constexpr Part tune[] = {{&pluck, 50, 30, tune_lead}, {&soft_bass, 45, 0, tune_bass}};

// The effects are louder than the music that they sound over.
constexpr Piece pieces[] = {
    {"sounds/shoot.wav", false, 600, 1, 30, 70, shoot},
    {"sounds/game-over.wav", false, 73, 1, 30, 60, game_over},
    {"sounds/menus.wav", true, 88, 8, 40, 32, menus},
    {"sounds/levelup.wav", false, 150, 2, 35, 60, levelup},
    {"sounds/background-lv1.wav", true, 126, 8, 35, 36, background_lv1},
    {"sounds/background-lv2.wav", true, 136, 8, 35, 40, background_lv2},
    {"sounds/background-lv3.wav", true, 146, 8, 35, 44, background_lv3},
    {"examples/sounds/shot.wav", false, 600, 1, 30, 70, shot},
    {"examples/sounds/boom.wav", false, 300, 1, 30, 75, boom},
    {"examples/sounds/coin.wav", false, 400, 1, 30, 60, coin},
    {"examples/guide/sounds/catch.wav", false, 600, 1, 30, 70, shoot},
    {"examples/sounds/tune.wav", true, 120, 4, 35, 30, tune},
};

} // namespace

std::span<const Piece> score() {
    return pieces;
}

} // namespace sounds
