#include "resources/audioDevice.h"

#include "core/LogManager.h"
#include "platform/system.h"
#include "resources/LibraryMessages.h"

#include <SFML/Audio/InputSoundFile.hpp>
#include <SFML/Audio/SoundBuffer.hpp>

#include <algorithm>

namespace sv {

namespace {

/// Those that the library has a layout for.
constexpr unsigned playable_channels[] = {1, 2, 4, 6, 7, MOST_CHANNELS};
constexpr unsigned most_samples_per_second = 384'000;

/// The library opens the device with its first object and answers nothing: that it complains is
/// all that tells.
bool opensDevice() {
    LibraryMessages messages;
    { const sf::SoundBuffer first_object; }
    return messages.take().empty();
}

bool findDevice() {
    if (opensDevice())
        return true;
    LogManager::getInstance().writeLog(
        "hasAudioDevice(): Note! No audio device can be opened. Sounds and music stay silent.");
    return false;
}

} // namespace

bool hasAudioDevice() {
    static const bool has_device = findDevice();
    return has_device;
}

bool openSoundFile(sf::InputSoundFile &file, const std::string &filename) {
    // In a folder or a device the library would look for the beginning of a track for ever.
    if (platform::isOtherThanFile(filename) || !file.openFromFile(filename))
        return false;
    const unsigned rate = file.getSampleRate();
    return 1 <= rate && rate <= most_samples_per_second &&
           std::ranges::find(playable_channels, file.getChannelCount()) !=
               std::end(playable_channels);
}

} // namespace sv
