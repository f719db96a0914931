/// Whether this machine can play, and how it starts to.
#pragma once

namespace sv {

/// Whether an audio device can be opened. The first call tries, and logs a note if there is none;
/// the answer is the same for the rest of the process. Game-loop thread only.
///
/// Without a device no sound object of SFML may be made: each call on one would write lines to
/// standard error, and a playing track would spin in its thread. OpenAL's null output
/// (ALSOFT_DRIVERS=null), which plays into nothing, counts as a device.
bool hasAudioDevice();

/// While sound is unwanted, this machine counts as one without a device, and nothing is logged
/// about it.
void setSoundWanted(bool is_wanted);

/// From now on nothing is loaded or played: the process ends, and SFML's audio, which ends with it,
/// must not be called any more.
void giveUpAudio();
bool isAudioGivenUp();

/// Plays an sf::Sound or sf::Music from the beginning, over and over if `loop`; null plays nothing.
template<typename Source>
void playFromBeginning(Source *source, bool loop) {
    if (!source || isAudioGivenUp())
        return;
    // Set before, because SFML's thread reads seconds ahead at once and would not loop at the end
    // of a short track. Set again after, whatever the start did to the settings; this must stay.
    source->setLoop(loop);
    source->play();
    source->setLoop(loop);
}

} // namespace sv
