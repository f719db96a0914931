/// Whether this machine can play at all, and which files it can.
#pragma once

#include <string>

namespace sf {
class InputSoundFile;
}

namespace sv {

/// No sound file that openSoundFile() lets through has more.
inline constexpr unsigned MOST_CHANNELS = 8;

/// Whether an audio device can be opened. The first call tries, and says in the log if there is
/// none; the answer holds for the process. Game-loop thread only.
///
/// Without a device no sound object of the media library may be made: each call on one would write
/// lines to standard error, and a playing track would spin in its thread. To play to nowhere on
/// purpose, OpenAL's own settings do (ALSOFT_DRIVERS=null): its null output counts as a device.
bool hasAudioDevice();

/// Opens a sound file; false if it cannot be read, or if it claims channels or a sample rate that
/// no device plays. The library takes memory for a second of whatever a track claims to be, so
/// each file passes here first.
bool openSoundFile(sf::InputSoundFile &file, const std::string &filename);

} // namespace sv
