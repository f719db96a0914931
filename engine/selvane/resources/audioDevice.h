/// Whether this machine can play at all.
#pragma once

namespace sv {

/// Whether an audio device can be opened. The first call tries, and says in the log if there is
/// none; the answer holds for the process. Game-loop thread only.
///
/// Without a device no sound object of the media library may be made: each call on one would write
/// lines to standard error, and a playing track would spin in its thread. To play to nowhere on
/// purpose, OpenAL's own settings do (ALSOFT_DRIVERS=null): its null output counts as a device.
bool hasAudioDevice();

/// From now on nothing is loaded and nothing played: the process ends, and with it goes the media
/// library, which must not be called any more.
void giveUpAudio();
bool isAudioGivenUp();

} // namespace sv
