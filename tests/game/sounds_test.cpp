#include "sounds/notes.h"
#include "sounds/render.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace {

using Samples = std::vector<std::int16_t>;

constexpr std::size_t header_size = 44;
constexpr int rate = 22050;

struct Expected {
    const char *file;
    bool is_music;
    double shortest; // Seconds.
    double longest;
};

constexpr Expected all_files[] = {
    {"shoot.wav", false, 0.1, 0.5},      {"levelup.wav", false, 1, 4},
    {"game-over.wav", false, 1, 3.3}, // The program ends with the animation.
    {"menus.wav", true, 8, 30},          {"background-lv1.wav", true, 8, 16},
    {"background-lv2.wav", true, 8, 16}, {"background-lv3.wav", true, 8, 16},
};

std::string bytesOf(std::string_view name) {
    std::ifstream file(SOUNDS "/" + std::string(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

unsigned long numberAt(const std::string &bytes, std::size_t at, std::size_t size) {
    unsigned long value = 0;
    for (std::size_t i = size; i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
    return value;
}

Samples samplesOf(const char *name) {
    const std::string bytes = bytesOf(name);
    Samples samples;
    for (std::size_t at = header_size; at + 1 < bytes.size(); at += 2)
        samples.push_back(static_cast<std::int16_t>(numberAt(bytes, at, 2)));
    return samples;
}

int jump(const Samples &samples, std::size_t from) {
    return std::abs(samples.at(from) - samples.at((from + 1) % samples.size()));
}

int loudestSample(const Samples &samples) {
    int loudest = 0;
    for (const std::int16_t sample : samples)
        loudest = std::max(loudest, std::abs(int{sample}));
    return loudest;
}

/// The mean of the loudest twentieth of a second.
double loudness(const Samples &samples) {
    constexpr std::size_t window = rate / 20;
    double loudest = 0;
    for (std::size_t at = 0; at + window <= samples.size(); at += window) {
        double sum = 0;
        for (std::size_t i = at; i < at + window; ++i)
            sum += std::pow(samples[i], 2);
        loudest = std::max(loudest, std::sqrt(sum / window));
    }
    return loudest;
}

constexpr sounds::Instrument flat = {.x = "c3", .attack = 1, .release = 50};

sounds::Piece pieceOf(const sounds::Part &part, bool loops) {
    return {"piece.wav", loops, 120, 1, 1, 0, 50, {&part, 1}};
}

} // namespace

TEST(GameSounds, the_files_are_what_the_score_makes) {
    std::size_t files = 0;
    for (const sounds::Piece &piece : sounds::score()) {
        std::string error;
        const std::string made = sounds::waveFile(sounds::render(piece, error));
        EXPECT_EQ(error, "") << piece.file;
        EXPECT_TRUE(bytesOf(piece.file) == made) << piece.file << ": run make_sounds again";
        ++files;
    }
    EXPECT_EQ(files, std::size(all_files));
}

TEST(GameSounds, the_files_have_one_channel_of_16_bits_and_a_fitting_length) {
    for (const Expected &expected : all_files) {
        SCOPED_TRACE(expected.file);
        const std::string bytes = bytesOf(expected.file);
        ASSERT_GT(bytes.size(), header_size);
        EXPECT_EQ(bytes.substr(0, 4), "RIFF");
        EXPECT_EQ(numberAt(bytes, 4, 4), bytes.size() - 8);
        EXPECT_EQ(bytes.substr(8, 8), "WAVEfmt ");
        EXPECT_EQ(numberAt(bytes, 16, 4), 16U);
        EXPECT_EQ(numberAt(bytes, 20, 2), 1U) << "not compressed";
        EXPECT_EQ(numberAt(bytes, 22, 2), 1U) << "channels";
        EXPECT_EQ(numberAt(bytes, 24, 4), unsigned{rate});
        EXPECT_EQ(numberAt(bytes, 28, 4), 2U * rate);
        EXPECT_EQ(numberAt(bytes, 32, 2), 2U);
        EXPECT_EQ(numberAt(bytes, 34, 2), 16U) << "bits";
        EXPECT_EQ(bytes.substr(36, 4), "data");
        EXPECT_EQ(numberAt(bytes, 40, 4), bytes.size() - header_size);
        const double seconds = static_cast<double>(bytes.size() - header_size) / (2.0 * rate);
        EXPECT_GE(seconds, expected.shortest);
        EXPECT_LE(seconds, expected.longest);
    }
}

TEST(GameSounds, together_the_files_stay_below_4_megabytes) {
    std::uintmax_t size = 0;
    for (const auto &file : std::filesystem::directory_iterator(SOUNDS))
        size += file.file_size();
    EXPECT_GT(size, 0U);
    EXPECT_LT(size, 4'000'000U);
}

TEST(GameSounds, no_sample_is_clipped_and_effects_are_heard_over_the_music) {
    double loudest_music = 0;
    double softest_effect = 1e9;
    for (const Expected &expected : all_files) {
        const Samples samples = samplesOf(expected.file);
        EXPECT_LT(loudestSample(samples), 30000) << expected.file;
        EXPECT_GT(loudestSample(samples), 8000) << expected.file;
        if (expected.is_music)
            loudest_music = std::max(loudest_music, loudness(samples));
        else
            softest_effect = std::min(softest_effect, loudness(samples));
    }
    EXPECT_GT(softest_effect, loudest_music);
}

TEST(GameSounds, music_begins_anew_without_a_click) {
    for (const Expected &expected : all_files) {
        if (!expected.is_music)
            continue;
        const Samples samples = samplesOf(expected.file);
        ASSERT_GT(samples.size(), 1U) << expected.file;
        const std::size_t last = samples.size() - 1;
        double sum = 0;
        for (std::size_t i = 0; i < last; ++i)
            sum += jump(samples, i);
        // The largest jump is a drum's, and would hide a click.
        EXPECT_LE(jump(samples, last), 2 * sum / static_cast<double>(last)) << expected.file;
    }
}

TEST(GameSounds, what_does_not_loop_fades_out) {
    const std::string_view bars[] = {"x - - - - - - - - - - - - - - -"};
    const sounds::Part part = {&flat, 100, 0, bars};
    std::string error;
    const Samples samples = sounds::render(pieceOf(part, false), error);
    ASSERT_EQ(samples.size(), std::size_t{2 * rate});
    EXPECT_GT(loudestSample({samples.end() - rate / 10, samples.end()}), 10000);
    EXPECT_LT(loudestSample({samples.end() - rate / 1000, samples.end()}), 500);
    EXPECT_EQ(samples.back(), 0);
}

TEST(GameSounds, what_sounds_beyond_the_end_of_a_loop_is_heard_at_its_beginning) {
    const std::string_view bars[] = {". . . . . . . . . . . . . . . x"};
    const sounds::Part part = {&flat, 100, 0, bars};
    std::string error;
    Samples looped = sounds::render(pieceOf(part, true), error);
    Samples ended = sounds::render(pieceOf(part, false), error);
    ASSERT_EQ(looped.size(), std::size_t{2 * rate});
    ASSERT_EQ(ended.size(), looped.size());
    looped.resize(rate / 5);
    ended.resize(rate / 5);
    EXPECT_GT(loudestSample(looped), 10000);
    EXPECT_EQ(loudestSample(ended), 0);
}

TEST(GameSounds, an_echo_comes_later_and_softer_and_around_the_end_of_a_loop) {
    const std::string_view bars[] = {". . . . . . . . . . . . x . . ."};
    constexpr sounds::Instrument blip = {.x = "c5", .attack = 1, .release = 4};
    const sounds::Part part = {&blip, 100, 50, bars};
    sounds::Piece piece = pieceOf(part, true);
    piece.echo_steps = 6;
    piece.echo_feedback = 50;
    std::string error;
    const Samples samples = sounds::render(piece, error);
    const auto loudestIn = [&](std::size_t step) {
        const auto at = samples.begin() + static_cast<std::ptrdiff_t>(step * rate / 8);
        return loudestSample({at, at + rate / 8});
    };
    ASSERT_EQ(samples.size(), std::size_t{2 * rate});
    double expected = loudestIn(12);
    for (const std::size_t step : {2U, 8U, 14U, 4U}) {
        expected /= 2;
        EXPECT_NEAR(loudestIn(step), expected, 100) << step;
    }
    EXPECT_LT(loudestIn(6), 10);
}

TEST(GameSounds, notes_have_their_pitch) {
    const std::pair<const char *, int> cases[] = {
        // Semitones above the a of 440 hertz.
        {"a1", -36}, {"e2", -29}, {"c4", -9},  {"a4", 0},   {"bb4", 1}, {"c6", 15},
        {"c#6", 16}, {"d6", 17},  {"d#6", 18}, {"e6", 19},  {"f6", 20}, {"gb6", 21},
        {"g6", 22},  {"ab6", 23}, {"a6", 24},  {"a#6", 25}, {"b6", 26},
    };
    for (const auto &[note, semitones] : cases) {
        const std::string bar = std::string(note) + " - - - - - - - - - - - - - - -";
        const std::string_view bars[] = {bar};
        const sounds::Part part = {&flat, 100, 0, bars};
        std::string error;
        const Samples samples = sounds::render(pieceOf(part, true), error);
        ASSERT_EQ(samples.size(), std::size_t{2 * rate}) << error;
        int periods = 0;
        for (std::size_t i = 1; i < samples.size(); ++i)
            periods += samples[i - 1] < 0 && samples[i] >= 0 ? 1 : 0;
        EXPECT_NEAR(periods / 2.0, 440 * std::pow(2, semitones / 12.0), 1) << note;
    }
}

TEST(GameSounds, the_words_of_a_bar_are_notes_and_bars_begin_again) {
    const std::string_view bars[] = {"a4! - . x? c#4e4 - - bb2 . . . . . . . b7",
                                     "- . . . . . . . . . . . . . . c1"};
    const sounds::Part part = {&flat, 100, 0, bars};
    std::vector<sounds::Note> notes;
    std::string error;
    ASSERT_EQ(sounds::readNotes(part, 3, notes, error), 0) << error;
    std::string read;
    for (const sounds::Note &note : notes)
        read += std::to_string(note.start) + "+" + std::to_string(note.steps) + " " +
                std::to_string(note.pitch) + " " + std::to_string(note.loudness) + "%\n";
    EXPECT_EQ(read, "0+2 57 135%\n3+1 36 60%\n4+3 49 100%\n4+3 52 100%\n7+1 34 100%\n"
                    "15+2 95 100%\n31+1 12 100%\n"
                    "32+2 57 135%\n35+1 36 60%\n36+3 49 100%\n36+3 52 100%\n39+1 34 100%\n"
                    "47+1 95 100%\n");
}

TEST(GameSounds, a_bar_that_cannot_be_played_is_told) {
    const std::string dots = " . . . . . . . . . . . . . . .";
    const std::pair<std::string, std::string> cases[] = {
        {"-" + dots, "'-' cannot stand there"},
        {"h4" + dots, "'h4' cannot stand there"},
        {"c" + dots, "'c' cannot stand there"},
        {"c#" + dots, "'c#' cannot stand there"},
        {"c8" + dots, "'c8' cannot stand there"},
        {"c4e" + dots, "'c4e' cannot stand there"},
        {"!" + dots, "'!' cannot stand there"},
        {"x" + dots, "'x' cannot stand there"}, // Of an instrument without a note of its own.
        {dots, "it has 15 steps"},
        {". ." + dots, "it has 17 steps"},
    };
    for (const auto &[bar, reason] : cases) {
        const std::string_view bars[] = {bar};
        constexpr sounds::Instrument without_x;
        const sounds::Part part = {&without_x, 100, 0, bars};
        std::string error;
        EXPECT_TRUE(sounds::render(pieceOf(part, true), error).empty()) << bar;
        EXPECT_EQ(error, "bar '" + bar + "': " + reason);
    }
}
