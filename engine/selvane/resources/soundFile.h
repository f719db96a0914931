/// Opens the sound files that SFML reads safely.
#pragma once

#include <string>

namespace sf {
class InputSoundFile;
}

namespace sv {

/// No file that openSoundFile() accepts has more.
inline constexpr unsigned MOST_CHANNELS = 8;

/// Opens a sound file; false if it cannot be read, or if it claims channels or a sample rate that
/// no device plays. SFML allocates memory for a second of whatever a track claims to be, and some
/// damaged files crash it, so each is checked here first.
bool openSoundFile(sf::InputSoundFile &file, const std::string &filename);

} // namespace sv
