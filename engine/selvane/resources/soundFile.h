/// Sound files as the media library reads them, and what it must not be given.
#pragma once

#include <string>

namespace sf {
class InputSoundFile;
}

namespace sv {

/// No sound file that openSoundFile() lets through has more.
inline constexpr unsigned MOST_CHANNELS = 8;

/// Opens a sound file; false if it cannot be read, or if it claims channels or a sample rate that
/// no device plays. The library takes memory for a second of whatever a track claims to be, and
/// does not survive every damaged file, so each passes here first.
bool openSoundFile(sf::InputSoundFile &file, const std::string &filename);

} // namespace sv
