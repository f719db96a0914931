#include "sounds/notes.h"
#include "sounds/render.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace {

using Samples = std::vector<std::int16_t>;

int loudestOf(const Samples &samples) {
    const auto [low, high] = std::ranges::minmax(samples);
    return std::max(-low, int{high});
}

double meanJump(const Samples &samples) {
    double sum = 0;
    for (std::size_t i = 1; i < samples.size(); ++i)
        sum += std::abs(samples[i] - samples[i - 1]);
    return sum / static_cast<double>(samples.size() - 1);
}

} // namespace

// The files fix every sample. The other rules are for whoever changes the score and makes new
// files.
TEST(GameSounds, the_score_renders_to_the_committed_bytes) {
    for (const sounds::Piece &piece : sounds::score()) {
        SCOPED_TRACE(piece.file);
        std::string error;
        const Samples samples = sounds::render(piece, error);
        const std::string made = sounds::waveFile(samples);
        std::ifstream file(TREE "/" + std::string(piece.file), std::ios::binary);
        EXPECT_TRUE(made == std::string(std::istreambuf_iterator<char>(file), {}))
            << error << ": run make_sounds again";
        ASSERT_FALSE(samples.empty());
        EXPECT_LT(loudestOf(samples), 30000) << "clipped";
        // The largest jump is a drum's, and would hide a click.
        if (piece.loops)
            EXPECT_LE(std::abs(samples.back() - samples.front()), 2 * meanJump(samples));
        else
            EXPECT_EQ(samples.back(), 0) << "fades out";
    }
}

// Notes as "start+steps pitch loudness", or what is wrong.
TEST(GameSounds, bars_are_read_or_refused_with_reasons) {
    const std::string dots = " . . . . . . . . . . . . . . .";
    const std::string_view good[] = {"a4! - . x? c#4e4 - - bb2 . . . . . . . b7",
                                     "- . . . . . . . . . . . . . . c1"};
    const auto read = [](std::span<const std::string_view> bars, std::string_view x) {
        const sounds::Instrument instrument{.x = x};
        const sounds::Part part = {&instrument, 100, 0, bars};
        std::vector<sounds::Note> notes;
        std::string text;
        if (sounds::readNotes(part, static_cast<int>(bars.size()) + 1, notes, text) != 0)
            return text.substr(text.rfind("': ") + 3);
        for (const sounds::Note &note : notes)
            text += std::to_string(note.start) + "+" + std::to_string(note.steps) + " " +
                    std::to_string(note.pitch) + " " + std::to_string(note.loudness) + "|";
        return text;
    };
    EXPECT_EQ(read(good, "c3"), "0+2 57 135|3+1 36 60|4+3 49 100|4+3 52 100|7+1 34 100|15+2 95 100|"
                                "31+1 12 100|32+2 57 135|35+1 36 60|36+3 49 100|36+3 52 100|"
                                "39+1 34 100|47+1 95 100|");
    const std::string refused = " is not allowed there";
    const std::pair<std::string, std::string> bad[] = {
        {"-" + dots, "'-'" + refused},     {"h4" + dots, "'h4'" + refused},
        {"c#" + dots, "'c#'" + refused},   {"c8" + dots, "'c8'" + refused},
        {"c4e" + dots, "'c4e'" + refused}, {"x" + dots, "'x'" + refused}, // It has no own note.
        {dots, "it has 15 steps"},         {". ." + dots, "it has 17 steps"},
    };
    for (const auto &[bar, reason] : bad) {
        const std::string_view bars[] = {bar};
        EXPECT_EQ(read(bars, ""), reason) << bar;
    }
}
