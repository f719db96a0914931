#include "selvane/resources/audioDevice.h"

#include "selvane/core/LogManager.h"
#include "selvane/display/SfmlMessages.h"
#include "selvane/platform/system.h"

#include <SFML/Audio/SoundBuffer.hpp>

namespace sv {

namespace {

bool is_given_up = false;
bool is_wanted = true;

/// SFML opens the device with its first object and returns nothing: only its messages show whether
/// it failed.
bool opensDevice() {
    SfmlMessages messages;
    // PulseAudio's library takes twelve random numbers when it finds no folder of its own.
    platform::keepRandom([] { const sf::SoundBuffer first_object; });
    return messages.take().empty();
}

bool findDevice() {
    if (opensDevice())
        return true;
    logLine("hasAudioDevice(): Note! No audio device can be opened. Sounds and music stay silent.");
    return false;
}

} // namespace

bool hasAudioDevice() {
    if (!is_wanted)
        return false;
    static const bool has_device = findDevice();
    return has_device;
}

void setSoundWanted(bool new_is_wanted) {
    is_wanted = new_is_wanted;
}

void giveUpAudio() {
    is_given_up = true;
}

bool isAudioGivenUp() {
    return is_given_up;
}

} // namespace sv
