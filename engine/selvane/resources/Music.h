/// A music track, read from its file while it plays: the file must stay in place for the whole run.
///
/// The resource manager owns the tracks that it loads. Without an audio device tracks load as usual
/// and play nothing. Game-loop thread only; SFML plays them on a thread of its own.
#pragma once

#include "selvane/resources/Resource.h"

#include <memory>
#include <string>

namespace sf {
class Music;
}

namespace sv {

class Music : public Resource {
  public:
    Music();
    ~Music();

    /// Plays from the beginning, over and over if `loop`, however short the track.
    void play(bool loop = false);
    void stop();

    // Called by the engine.

    /// Opens a file of any format that SFML reads, and closes the one opened before. 0, or -1 if
    /// that fails; then there is nothing to play. A track that is cut short is logged with a
    /// warning: it plays, but not in a loop, and may end in noise.
    int loadMusic(const std::string &filename);

    /// Stops it and forgets what was loaded.
    void unload();

  private:
    std::unique_ptr<sf::Music> music; // Null: nothing to play, or nothing to play it on.
};

/// Play and stop a track as its own functions do. They do nothing for null, which getMusic()
/// returns for an unknown label.
void play(Music *music, bool loop = false);
void stop(Music *music);

} // namespace sv
