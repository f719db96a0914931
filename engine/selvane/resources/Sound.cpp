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

/// The voices are destroyed before the samples that they play.
struct Sound::Player {
    void setUp(int new_voices, float new_volume) {
        sounds.assign(static_cast<std::size_t>(new_voices), sf::Sound(sound_buffer));
        next = 0;
        setVolume(new_volume);
    }

    void setVolume(float new_volume) {
        for (sf::Sound &sound : sounds)
            sound.setVolume(new_volume);
    }

    /// In turns, so it is the one that began first.
    sf::Sound *nextVoice() {
        sf::Sound *voice = &sounds[next];
        next = (next + 1) % sounds.size();
        return voice;
    }

    sf::SoundBuffer sound_buffer;
    std::vector<sf::Sound> sounds;
    std::size_t next = 0;
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
    auto loaded = std::make_unique<Player>();
    if (!loaded->sound_buffer.loadFromSamples(samples.values.data(), samples.values.size(),
                                              samples.channels, samples.per_second))
        return -1;
    loaded->setUp(voices, volume);
    player = std::move(loaded);
    return 0;
}

void Sound::unload() {
    player.reset();
}

void Sound::play(bool loop) {
    logLine(5, "Sound::play(): Playing sound.");
    playFromBeginning(player ? player->nextVoice() : nullptr, loop);
}

void Sound::stop() {
    if (!player)
        return;
    for (sf::Sound &sound : player->sounds)
        sound.stop();
}

int Sound::setVolume(float new_volume) {
    if (!(new_volume >= 0 && new_volume <= 100))
        return logFailure("Sound::setVolume(): Warning! Volume %g not in range [0,100]. Ignored.",
                          double{new_volume});
    volume = new_volume;
    if (player)
        player->setVolume(volume);
    return 0;
}

int Sound::setVoices(int new_voices) {
    if (new_voices < 1 || new_voices > MAX_VOICES)
        return logFailure("Sound::setVoices(): Warning! %d voices not in range [1,%d]. Ignored.",
                          new_voices, MAX_VOICES);
    voices = new_voices;
    if (player)
        player->setUp(voices, volume);
    return 0;
}

void play(Sound *sound, bool loop) {
    if (sound)
        sound->play(loop);
}

} // namespace sv
