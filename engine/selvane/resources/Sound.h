/// A short effect, held decoded in memory. With one voice, the default, it starts over when it is
/// played again while it sounds; with more it sounds several times at once.
///
/// The resource manager owns the sounds that it loads. Without an audio device sounds load as usual
/// and play nothing. Game-loop thread only; SFML plays them on a thread of its own.
#pragma once

#include "selvane/resources/Resource.h"

#include <memory>
#include <string>

namespace sv {

/// The most samples that a sound may have, over all channels: three minutes of stereo at 44100 a
/// second, which take 32 MB decoded.
inline constexpr int MAX_SOUND_SAMPLES = 16 * 1024 * 1024;
/// The most voices of one sound.
inline constexpr int MAX_VOICES = 16;

class Sound : public Resource {
  public:
    Sound();
    ~Sound();

    /// Plays from the beginning, over and over if `loop`.
    void play(bool loop = false);

    /// Stops every voice.
    void stop();

    /// 0 to 100, the default; also of what sounds now. 0, or -1 for any other number.
    int setVolume(float new_volume);
    float getVolume() const { return volume; }

    /// How often it can sound at once, 1 to MAX_VOICES. Played once more, it takes the voice that
    /// began first. Stops what sounds. 0, or -1 for any other number.
    int setVoices(int new_voices);
    int getVoices() const { return voices; }

    // Called by the engine.

    /// Decodes a file of any format that SFML reads, and replaces what was loaded before. 0, or -1
    /// if it cannot be read to its end or is too long; then there is nothing to play. An Ogg file
    /// does not say how long it is, so it counts as complete wherever it ends.
    int loadSound(const std::string &filename);

    /// Stops it and forgets what was loaded.
    void unload();

  private:
    struct Player;

    std::unique_ptr<Player> player; // Null: nothing to play, or nothing to play it on.
    float volume = 100;
    int voices = 1;
};

/// Plays a sound as Sound::play does. Does nothing for null, which getSound() returns for an
/// unknown label.
void play(Sound *sound, bool loop = false);

} // namespace sv
