/// Owns every sprite, sound and music track of a game, each found by its label. A game loads them
/// all at its start, from files that findAsset() looks for, and they stay until the manager stops.
///
/// Labels may repeat, with a warning: the first one loaded is found, and the later ones only take
/// up room. Game-loop thread only.
#pragma once

#include "selvane/core/Manager.h"
#include "selvane/resources/Music.h"
#include "selvane/resources/Sound.h"
#include "selvane/resources/Sprite.h"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace sv {

/// How much one manager holds.
inline constexpr int MAX_SPRITES = 1000;
inline constexpr int MAX_SOUNDS = 100;
inline constexpr int MAX_MUSICS = 50;

/// What a game has loaded from a file, or tried to.
struct LoadedFile {
    std::string name; ///< As the game says it.
    std::string path; ///< Where it was found.
    std::string label;
    Sprite *sprite = nullptr; ///< Null: a sound, or a sprite that is faulty.
    Sound *sound = nullptr;
};

class ResourceManager : public Manager {
  public:
    static ResourceManager &getInstance();

    /// Loads a sprite from a text file of either format. A byte order mark at the file's beginning
    /// is skipped. 0, or -1 with the reason in the log.
    int loadSprite(const std::string &filename, const std::string &label);

    /// Loads a sound from a file of any format that SFML reads. 0, or -1 with the reason in the
    /// log.
    int loadSound(const std::string &filename, const std::string &label);

    /// Opens a music track, as loadSound. The label must not be empty.
    int loadMusic(const std::string &filename, const std::string &label);

    /// What was loaded first under exactly that label, or null. The manager keeps it.
    Sprite *getSprite(const std::string &label) const;
    Sound *getSound(const std::string &label);
    Music *getMusic(const std::string &label);

    // Called by the engine.

    /// Begins with empty stores. From the first start on, the end of the process, even by exit() in
    /// the middle of a game, stops all sounds and tracks. Code that runs even later, such as
    /// destructors of statics, can load nothing, and what it plays is silent.
    int startUp() override;

    /// Deletes the sprites, so objects show nothing in their place, and stops the sounds and as
    /// many tracks as there are sounds. Sounds and tracks can still be found.
    void shutDown() override;

    /// Called at each end of loading a sprite, and of loading a sound if that went well.
    void setLoadListener(std::function<void(const LoadedFile &)> listener) {
        load_listener = std::move(listener);
    }

  private:
    ResourceManager();

    void releaseAudio();
    Sprite *addSprite(const std::string &filename, const std::string &path,
                      const std::string &label);

    std::vector<std::unique_ptr<Sprite>> sprites;
    std::array<Sound, MAX_SOUNDS> sounds;
    std::array<Music, MAX_MUSICS> music;
    int sound_count = 0;
    int music_count = 0;
    std::function<void(const LoadedFile &)> load_listener;
};

} // namespace sv
