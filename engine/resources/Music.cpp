#include "resources/Music.h"

#include "core/LogManager.h"
#include "resources/LibraryMessages.h"
#include "resources/audioDevice.h"

#include <SFML/Audio/InputSoundFile.hpp>
#include <SFML/Audio/Music.hpp>

namespace sv {

Music::Music() = default;
Music::~Music() = default;

int Music::loadMusic(const std::string &filename) {
    music.reset();
    const bool has_device = hasAudioDevice();
    const LibraryMessages messages;
    sf::InputSoundFile file;
    if (!openSoundFile(file, filename))
        return -1;
    if (!has_device)
        return 0;
    auto opened = std::make_unique<sf::Music>();
    if (!opened->openFromFile(filename))
        return -1;
    music = std::move(opened);
    return 0;
}

void Music::play(bool loop) {
    LogManager::getInstance().writeLog(5, "Music::play(): Playing music.");
    if (!music)
        return;
    music->play();
    music->setLoop(loop);
}

void Music::stop() {
    LogManager::getInstance().writeLog(5, "Music::stop(): Stopping music.");
    if (music)
        music->stop();
}

void play(Music *p_music, bool loop) {
    if (p_music != nullptr)
        p_music->play(loop);
}

void stop(Music *p_music) {
    if (p_music != nullptr)
        p_music->stop();
}

} // namespace sv
