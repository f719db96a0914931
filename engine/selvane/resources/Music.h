/// A music track, read from its file while it plays: the file stays in place for the whole run.
///
/// The resource manager owns the tracks that it loads. On a machine without an audio device a
/// track loads as anywhere and plays nothing. Game-loop thread only; it plays on a thread of the
/// media library.
#pragma once

#include "selvane/resources/label.h"

#include <memory>
#include <string>
#include <utility>

namespace sf {
class Music;
}

namespace sv {

class Music {
  public:
    Music();
    ~Music();
    Music(const Music &) = delete;
    Music &operator=(const Music &) = delete;

    /// Opens a file of any format that the media library knows, in place of the one opened before.
    /// 0, or -1 if that fails; then there is nothing to play. Of a track that is cut short the log
    /// warns: it plays, but not in a loop, and may end in noise.
    int loadMusic(const std::string &filename);

    /// Stops it and forgets what was loaded.
    void unload();

    const std::string &getLabel() const { return label; }
    void setLabel(std::string new_label) { label = std::move(new_label); }

    /// Plays from the beginning, over and over if `loop`, however short the track.
    void play(bool loop = false);
    void stop();

  private:
    std::unique_ptr<sf::Music> music; // Null: nothing to play, or nothing to play it on.
    std::string label = UNDEFINED_LABEL;
};

/// Plays and stops a track as its own operations do; null, the answer to an unknown label, is no
/// track and nothing happens.
void play(Music *p_music, bool loop = false);
void stop(Music *p_music);

} // namespace sv
