/// A short effect, held decoded in memory, with one voice: played again while it sounds, it starts
/// over.
///
/// The resource manager owns the sounds that it loads. On a machine without an audio device a
/// sound loads as anywhere and plays nothing. Game-loop thread only; it sounds on a thread of the
/// media library.
#pragma once

#include "selvane/resources/label.h"

#include <memory>
#include <string>
#include <utility>

namespace sv {

/// The samples that a sound may have, those of all channels counted: three minutes of stereo at
/// 44100 a second, which take 32 MB decoded.
inline constexpr int MAX_SOUND_SAMPLES = 16 * 1024 * 1024;

class Sound {
  public:
    Sound();
    ~Sound();
    Sound(const Sound &) = delete;
    Sound &operator=(const Sound &) = delete;

    /// Decodes a file of any format that the media library knows, in place of what was loaded
    /// before. 0, or -1 if it cannot be read whole or is too long; then there is nothing to play.
    /// An Ogg file does not tell how long it is, and is whole wherever it ends.
    int loadSound(const std::string &filename);

    /// Stops it and forgets what was loaded.
    void unload();

    const std::string &getLabel() const { return label; }
    void setLabel(std::string new_label) { label = std::move(new_label); }

    /// Plays from the beginning, over and over if `loop`.
    void play(bool loop = false);
    void stop();

  private:
    struct Voice;

    std::unique_ptr<Voice> voice; // Null: nothing to play, or nothing to play it on.
    std::string label = UNDEFINED_LABEL;
};

/// Plays a sound as Sound::play does; null, the answer to an unknown label, is nothing to play.
void play(Sound *p_sound, bool loop = false);

} // namespace sv
