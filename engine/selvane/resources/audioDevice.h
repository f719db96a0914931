/// Whether this machine can play at all.
#pragma once

namespace sv {

/// Whether an audio device can be opened. The first call tries, and says in the log if there is
/// none; the answer holds for the process, or until giveUpAudioDevice(). Game-loop thread only.
///
/// Without a device no sound object of the media library may be made: each call on one would write
/// lines to standard error, and a playing track would spin in its thread. To play to nowhere on
/// purpose, OpenAL's own settings do (ALSOFT_DRIVERS=null): its null output counts as a device.
bool hasAudioDevice();

/// From now on this machine counts as one without an audio device: the process ends.
void giveUpAudioDevice();

} // namespace sv
