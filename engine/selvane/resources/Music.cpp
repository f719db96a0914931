#include "selvane/resources/Music.h"

#include "selvane/core/LogManager.h"
#include "selvane/display/SfmlMessages.h"
#include "selvane/resources/audioDevice.h"
#include "selvane/resources/soundFile.h"

#include <SFML/Audio/InputSoundFile.hpp>
#include <SFML/Audio/Music.hpp>

#include <array>

namespace sv {

namespace {

/// Whether the track claims to go on after the end of its file, or ends in the middle of a frame,
/// between two channels. A format that does not store its length is complete wherever it ends.
bool isCutShort(sf::InputSoundFile &file) {
    if (file.getSampleCount() % file.getChannelCount() != 0)
        return true;
    if (file.getSampleCount() == 0)
        return false;
    std::array<sf::Int16, MOST_CHANNELS> last{};
    file.seek(file.getSampleCount() - 1);
    return file.read(last.data(), file.getChannelCount()) == 0;
}

} // namespace

Music::Music() = default;
Music::~Music() = default;

int Music::loadMusic(const std::string &filename) {
    unload();
    if (isAudioGivenUp())
        return -1;
    const bool has_device = hasAudioDevice();
    const SfmlMessages messages;
    sf::InputSoundFile file;
    if (!openSoundFile(file, filename))
        return -1;
    // Half a track is better than none, though SFML goes back to the beginning only at the claimed
    // end, and may garble the last second.
    if (isCutShort(file))
        logLine("Music::loadMusic(): Warning! '%s' is cut short and may not play as it should.",
                filename.c_str());
    if (!has_device)
        return 0;
    auto opened = std::make_unique<sf::Music>();
    if (!opened->openFromFile(filename))
        return -1;
    music = std::move(opened);
    return 0;
}

void Music::unload() {
    music.reset();
}

void Music::play(bool loop) {
    logLine(5, "Music::play(): Playing music.");
    playFromBeginning(music.get(), loop);
}

void Music::stop() {
    logLine(5, "Music::stop(): Stopping music.");
    if (music)
        music->stop();
}

void play(Music *music, bool loop) {
    if (music)
        music->play(loop);
}

void stop(Music *music) {
    if (music)
        music->stop();
}

} // namespace sv
