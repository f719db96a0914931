#include "selvane/resources/Sound.h"

#include "selvane/core/LogManager.h"
#include "selvane/display/SfmlMessages.h"
#include "selvane/resources/audioDevice.h"
#include "selvane/resources/soundFile.h"

#include <SFML/Audio/InputSoundFile.hpp>
#include <SFML/Audio/Sound.hpp>
#include <SFML/Audio/SoundBuffer.hpp>

#include <array>
#include <vector>

namespace sv {

namespace {

struct Samples {
    std::vector<sf::Int16> values; // Of all channels in turn.
    unsigned channels = 0;
    unsigned per_second = 0;
};

bool isTooLong(std::size_t samples, const std::string &filename) {
    if (samples > MAX_SOUND_SAMPLES)
        logLine("Sound::loadSound(): Error! '%s' has more than %d samples. Play it as music.",
                filename.c_str(), MAX_SOUND_SAMPLES);
    return samples > MAX_SOUND_SAMPLES;
}

/// False if the file cannot be decoded, holds less than it claims, or more than a sound may have:
/// two megabytes can hold hours of silence. Allocates memory for what is there; SFML would allocate
/// it for what the file claims.
bool decode(const std::string &filename, Samples &samples) {
    sf::InputSoundFile file;
    if (!openSoundFile(file, filename) || isTooLong(file.getSampleCount(), filename))
        return false;
    samples.channels = file.getChannelCount();
    samples.per_second = file.getSampleRate();
    std::array<sf::Int16, 16384> piece{};
    std::ptrdiff_t count = 0;
    do {
        count = static_cast<std::ptrdiff_t>(file.read(piece.data(), piece.size()));
        samples.values.insert(samples.values.end(), piece.begin(), piece.begin() + count);
    } while (count > 0 && samples.values.size() <= file.getSampleCount());
    if (samples.values.size() != file.getSampleCount())
        return false;
    // With half a frame at the end SFML would accept none of it.
    samples.values.resize(samples.values.size() - samples.values.size() % samples.channels);
    return !samples.values.empty();
}

} // namespace

/// The voice is destroyed before the samples that it plays.
struct Sound::Voice {
    sf::SoundBuffer sound_buffer;
    sf::Sound sound;
};

Sound::Sound() = default;
Sound::~Sound() = default;

int Sound::loadSound(const std::string &filename) {
    unload();
    if (isAudioGivenUp())
        return -1;
    const bool has_device = hasAudioDevice();
    const SfmlMessages messages;
    Samples samples;
    if (!decode(filename, samples))
        return -1;
    if (!has_device)
        return 0;
    auto loaded = std::make_unique<Voice>();
    if (!loaded->sound_buffer.loadFromSamples(samples.values.data(), samples.values.size(),
                                              samples.channels, samples.per_second))
        return -1;
    loaded->sound.setBuffer(loaded->sound_buffer);
    voice = std::move(loaded);
    return 0;
}

void Sound::unload() {
    voice.reset();
}

void Sound::play(bool loop) {
    logLine(5, "Sound::play(): Playing sound.");
    playFromBeginning(voice ? &voice->sound : nullptr, loop);
}

void Sound::stop() {
    if (voice)
        voice->sound.stop();
}

void play(Sound *sound, bool loop) {
    if (sound)
        sound->play(loop);
}

} // namespace sv
