#include "selvane/resources/soundFile.h"

#include "selvane/platform/system.h"

#include <SFML/Audio/InputSoundFile.hpp>

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>

namespace sv {

namespace {

/// Those that SFML has a layout for.
constexpr unsigned playable_channels[] = {1, 2, 4, 6, 7, MOST_CHANNELS};
constexpr unsigned most_samples_per_second = 384'000;

/// Whether the chunks of a wave file are in the wrong order or too large. If the samples come
/// before the format, SFML divides by their size, which is then 0, and the process ends. A chunk
/// that reaches beyond the file can lead it back to where it was, for ever, if it counts with 32
/// bits. The samples themselves may be cut short.
bool isMisleading(const std::string &filename) {
    std::ifstream file(filename, std::ios::binary | std::ios::ate);
    const std::streamoff end = file.tellg();
    file.seekg(0);
    std::array<char, 12> head{}; // "RIFF", the size of what follows, "WAVE".
    if (!file.read(head.data(), head.size()) || std::string_view(head.data(), 4) != "RIFF" ||
        std::string_view(head.data() + 8, 4) != "WAVE")
        return false;
    bool has_format = false;
    std::array<unsigned char, 8> chunk{}; // Its name, and its size without these 8 bytes.
    while (file.read(reinterpret_cast<char *>(chunk.data()), chunk.size())) {
        const std::string_view name(reinterpret_cast<const char *>(chunk.data()), 4);
        if (name == "data")
            return !has_format;
        has_format |= name == "fmt ";
        const auto size = std::streamoff{chunk[4]} | std::streamoff{chunk[5]} << 8 |
                          std::streamoff{chunk[6]} << 16 | std::streamoff{chunk[7]} << 24;
        if (size > end - file.tellg())
            return true;
        file.seekg(size, std::ios::cur);
    }
    return false;
}

} // namespace

bool openSoundFile(sf::InputSoundFile &file, const std::string &filename) {
    // In a folder or a device SFML would look for the beginning of a track for ever.
    if (platform::isOtherThanFile(filename) || isMisleading(filename) ||
        !file.openFromFile(filename))
        return false;
    const unsigned rate = file.getSampleRate();
    return 1 <= rate && rate <= most_samples_per_second &&
           std::ranges::find(playable_channels, file.getChannelCount()) !=
               std::end(playable_channels);
}

} // namespace sv
