#include "sounds/render.h"

#include "sounds/Voice.h"
#include "sounds/notes.h"

#include <algorithm>
#include <cstdlib>

namespace sounds {

namespace {

using Mix = std::vector<std::int64_t>;

constexpr std::size_t FADE = SAMPLES_PER_SECOND / 20; // At the end of a piece that does not loop.

std::size_t sampleOfStep(const Piece &piece, int step) {
    const std::int64_t steps_per_minute = std::int64_t{piece.beats_per_minute} * STEPS_IN_A_BEAT;
    return static_cast<std::size_t>(std::int64_t{step} * SAMPLES_PER_SECOND * 60 /
                                    steps_per_minute);
}

/// Mixes the parts of a piece, not yet at its loudness.
class Mixer {
  public:
    explicit Mixer(const Piece &of)
        : piece(of), dry(sampleOfStep(of, of.bars * STEPS_IN_A_BAR)), sent(dry.size()) {}

    void play(const Part &part, const Note &note) {
        std::size_t at = sampleOfStep(piece, note.start);
        const std::size_t end = sampleOfStep(piece, note.start + note.steps);
        Voice voice(*part.instrument, note, static_cast<int>(end - at));
        while (!voice.isOver()) {
            const std::int64_t sample = voice.next() * part.volume;
            dry[at] += sample;
            sent[at] += sample * part.echo / 100;
            if (++at < dry.size())
                continue;
            if (!piece.loops)
                return;
            at = 0;
        }
    }

    /// Returns the mix with its echo; to be called once.
    Mix take() {
        Mix echo(dry.size());
        // In a loop the end echoes at the beginning: the second round adds that.
        for (int round = 0; round < (piece.loops ? 2 : 1); ++round)
            addEcho(echo);
        for (std::size_t i = 0; i < dry.size(); ++i)
            dry[i] += echo[i];
        return std::move(dry);
    }

  private:
    void addEcho(Mix &echo) const {
        const std::size_t delay = sampleOfStep(piece, ECHO_STEPS);
        const std::size_t size = dry.size();
        for (std::size_t i = piece.loops ? 0 : delay; i < size; ++i) {
            const std::size_t from = (i + size - delay) % size;
            const std::size_t before = (from + size - 1) % size;
            // The mean of neighbours: each echo is duller than the one before.
            const std::int64_t again = (echo[from] + echo[before]) / 2;
            echo[i] = sent[from] + again * piece.echo_feedback / 100;
        }
    }

    const Piece &piece;
    Mix dry;
    Mix sent;
};

void fadeOut(Mix &mix) {
    const std::size_t length = std::min(FADE, mix.size());
    for (std::size_t i = 0; i < length; ++i)
        mix[mix.size() - 1 - i] = mix[mix.size() - 1 - i] * static_cast<std::int64_t>(i) /
                                  static_cast<std::int64_t>(length);
}

std::vector<std::int16_t> atPeak(const Mix &mix, int percent) {
    std::int64_t peak = 1;
    for (const std::int64_t sample : mix)
        peak = std::max(peak, std::abs(sample));
    std::vector<std::int16_t> samples;
    samples.reserve(mix.size());
    for (const std::int64_t sample : mix)
        samples.push_back(static_cast<std::int16_t>(sample * 32767 * percent / (peak * 100)));
    return samples;
}

std::string number(std::size_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i, value >>= 8)
        text += static_cast<char>(value & 0xFF);
    return text;
}

} // namespace

std::vector<std::int16_t> render(const Piece &piece, std::string &error) {
    Mixer mixer(piece);
    for (const Part &part : piece.parts) {
        std::vector<Note> notes;
        if (readNotes(part, piece.bars, notes, error) != 0)
            return {};
        for (const Note &note : notes)
            mixer.play(part, note);
    }
    Mix mix = mixer.take();
    if (!piece.loops)
        fadeOut(mix);
    return atPeak(mix, piece.peak);
}

std::string waveFile(const std::vector<std::int16_t> &samples) {
    constexpr std::size_t sample_size = 2;
    const std::size_t size = samples.size() * sample_size;
    std::string file = "RIFF" + number(36 + size, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) +
                       number(1, 2) + number(SAMPLES_PER_SECOND, 4) +
                       number(SAMPLES_PER_SECOND * sample_size, 4) + number(sample_size, 2) +
                       number(16, 2) + "data" + number(size, 4);
    file.reserve(file.size() + size);
    for (const std::int16_t sample : samples)
        file += number(static_cast<std::uint16_t>(sample), sample_size);
    return file;
}

} // namespace sounds
