#include "selvane/resources/ResourceManager.h"

#include "selvane/core/LogManager.h"
#include "selvane/core/assets.h"
#include "selvane/core/text.h"
#include "selvane/core/utf8.h"
#include "selvane/outside/Outside.h"
#include "selvane/resources/audioDevice.h"
#include "selvane/resources/readSprite.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <span>
#include <string_view>
#include <utility>

namespace sv {

namespace {

/// The filled part of a store.
template<typename Store>
auto loaded(Store &store, int count) {
    return std::span(store).first(static_cast<std::size_t>(count));
}

/// The first of the filled part with that label, or null.
template<typename Store>
auto findLabel(Store &store, int count, const std::string &label) {
    const auto filled = loaded(store, count);
    const auto found = std::ranges::find_if(
        filled, [&](const auto &resource) { return resource.getLabel() == label; });
    return found != filled.end() ? &*found : nullptr;
}

Sprite *findLabel(const std::vector<std::unique_ptr<Sprite>> &sprites, const std::string &label) {
    const auto found = std::ranges::find_if(
        sprites, [&](const auto &sprite) { return sprite->getLabel() == label; });
    return found != sprites.end() ? found->get() : nullptr;
}

/// Warns that what `operation` loads cannot be found, if `first` has its label already.
void warnIfTaken(const void *first, const char *operation, const std::string &label) {
    if (first)
        logFailure("RM::%s(): Warning! Label '%s' is taken; the first one stays.", operation,
                   label.c_str());
}

/// The path to open. A record has the file's fingerprint.
std::string findFile(const std::string &filename) {
    std::string path = findAsset(filename);
    Outside::getInstance().noteFile(filename, path);
    return path;
}

void logFrames(const Sprite &sprite) {
    constexpr int dump_level = 15;
    if (LogManager::getInstance().getLogLevel() < dump_level)
        return;
    logLine(dump_level, "RM::loadSprite(): Sprite '%s' frames:", sprite.getLabel().c_str());
    for (int i = 0; i < sprite.getFrameCount(); ++i) {
        logLine(dump_level, "\tFrame %d:", i + 1);
        const Frame frame = sprite.getFrame(i);
        const auto width = static_cast<std::size_t>(frame.getWidth());
        for (std::string_view rest = frame.getString(); !rest.empty();)
            logLine(dump_level, "\t%s", std::string(takeCells(rest, width)).c_str());
    }
}

} // namespace

ResourceManager &ResourceManager::getInstance() {
    static ResourceManager &instance = *new ResourceManager;
    return instance;
}

ResourceManager::ResourceManager() {
    setType("ResourceManager");
}

int ResourceManager::startUp() {
    if (isStarted())
        return refuseSecondStart();
    // A track must not play on while SFML is destroyed at the end of the process.
    [[maybe_unused]] static const int registered =
        std::atexit([] { getInstance().releaseAudio(); });
    sprites.clear();
    sound_count = 0;
    music_count = 0;
    Manager::startUp();
    logLine(5, "RM::startUp(): successfully started.");
    return 0;
}

void ResourceManager::shutDown() {
    sprites.clear();
    for (Sound &sound : loaded(sounds, sound_count))
        sound.stop();
    // The number of sounds, not of tracks: with fewer sounds than tracks, a track may go on playing
    // to the end of the process. Games and their logs rely on it.
    for (Music &track : loaded(music, std::min(sound_count, MAX_MUSICS)))
        track.stop();
    Manager::shutDown();
    logLine(5, "RM::shutDown(): successfully stopped.");
}

/// From now on nothing can be loaded, and what is played is silent.
void ResourceManager::releaseAudio() {
    giveUpAudio();
    for (Sound &sound : sounds)
        sound.unload();
    for (Music &track : music)
        track.unload();
}

int ResourceManager::loadSprite(const std::string &filename, const std::string &label) {
    if (!isStarted())
        return refuseUnstarted();
    if (sprites.size() == MAX_SPRITES) {
        // This names the robust loader, though the format is not known yet; logs are searched for
        // it.
        logLine("RM::loadRobustSprite(): Error! Cannot add more Sprites (max is %d).", MAX_SPRITES);
        return logFailure("RM::loadRobustSprite(): Sprite '%s' not loaded.", label.c_str());
    }
    logLine("RM::loadSprite(): Loading sprite '%s'.", filename.c_str());
    const std::string path = findFile(filename);
    Sprite *added = addSprite(filename, path, label);
    if (load_listener)
        load_listener({.name = filename, .path = path, .label = label, .sprite = added});
    return added ? 0 : -1;
}

/// Null, with log lines, if the file is not valid.
Sprite *ResourceManager::addSprite(const std::string &filename, const std::string &path,
                                   const std::string &label) {
    std::ifstream file = openSprite(path, filename);
    if (!file.is_open()) {
        logFailure("RM::loadSprite(): Sprite '%s' not loaded.", label.c_str());
        return nullptr;
    }
    auto sprite = readSprite(file, filename);
    if (!sprite) {
        logFailure("RM::loadSprite(): Sprite '%s' NOT loaded.", label.c_str());
        return nullptr;
    }
    warnIfTaken(findLabel(sprites, label), "loadSprite", label);
    sprite->setLabel(label);
    logFrames(*sprite);
    sprites.push_back(std::move(sprite));
    logLine(1, "RM::loadSprite(): Sprite '%s' loaded.", label.c_str());
    return sprites.back().get();
}

int ResourceManager::loadSound(const std::string &filename, const std::string &label) {
    if (!isStarted())
        return refuseUnstarted();
    if (sound_count == MAX_SOUNDS)
        return logFailure("RM::loadSound(): Error! Unable to add more sounds (max is %d).",
                          MAX_SOUNDS);
    Sound &sound = sounds[static_cast<std::size_t>(sound_count)];
    const std::string path = findFile(filename);
    if (sound.loadSound(path) != 0) {
        logSearch(filename);
        return logFailure("RM::loadSound(): Error! Cannot load sound from file '%s'.",
                          filename.c_str());
    }
    warnIfTaken(findLabel(sounds, sound_count, label), "loadSound", label);
    sound.setLabel(label);
    ++sound_count;
    logLine(1, "RM::loadSound(): Sound '%s' successfully loaded.", sound.getLabel().c_str());
    if (load_listener)
        load_listener({.name = filename, .path = path, .label = label, .sound = &sound});
    return 0;
}

int ResourceManager::loadMusic(const std::string &filename, const std::string &label) {
    if (!isStarted())
        return refuseUnstarted();
    if (music_count == MAX_MUSICS)
        return logFailure("RM::loadMusic(): Error! Unable to add more musics (max is %d).",
                          MAX_MUSICS);
    if (label.empty())
        return logFailure("RM::loadMusic(): Error! Must provide label for music.");
    Music &track = music[static_cast<std::size_t>(music_count)];
    if (track.loadMusic(findFile(filename)) != 0) {
        logSearch(filename);
        return logFailure("RM::loadmusic(): Error! Cannot load music from file '%s'.",
                          filename.c_str());
    }
    warnIfTaken(findLabel(music, music_count, label), "loadMusic", label);
    track.setLabel(label);
    ++music_count;
    logLine(1, "RM::loadMusic(): Music '%s' successfully loaded.", track.getLabel().c_str());
    return 0;
}

Sprite *ResourceManager::getSprite(const std::string &label) const {
    logLine(5, "RM::getSprite(): Looking for sprite '%s'.", printable(label).c_str());
    Sprite *found = findLabel(sprites, label);
    if (!found)
        logLine("RM::getSprite(): Warning! Sprite '%s' not found.", printable(label).c_str());
    return found;
}

Sound *ResourceManager::getSound(const std::string &label) {
    logLine(5, "RM::getSound(): Looking for sound '%s'.", label.c_str());
    Sound *found = findLabel(sounds, sound_count, label);
    if (!found)
        logLine("RM::getSound(): Warning! Sound '%s' not found.", label.c_str());
    return found;
}

Music *ResourceManager::getMusic(const std::string &label) {
    logLine(5, "RM::getMusic(): Looking for music '%s'.", label.c_str());
    Music *found = findLabel(music, music_count, label);
    if (!found)
        logLine("RM::getMusic(): Warning! Music '%s' not found.", label.c_str());
    return found;
}

} // namespace sv
