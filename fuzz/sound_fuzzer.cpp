// A sound file of any format, as a sound and as a track. Nothing is played: tools/fuzz sees to it
// that there is no audio device.

#include "fuzzing.h"
#include "selvane/resources/Music.h"
#include "selvane/resources/Sound.h"

#include <fstream>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    constexpr char file_name[] = "sound";
    const fuzz::Input input(data, size);
    std::ofstream(file_name, std::ios::binary) << input.text;
    sv::Sound sound;
    sv::Music track;
    const bool is_sound = sound.loadSound(file_name) == 0;
    const bool is_track = track.loadMusic(file_name) == 0;
    // A track may be cut, or too long for a sound.
    fuzz::require(is_track || !is_sound);
    sound.play(true);
    track.play(true);
    return 0;
}
