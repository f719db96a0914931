/// Sound files for tests, made on the spot.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace test {

/// A WAV file of one channel with 16 bits a sample.
inline std::string waveFile(const std::vector<std::int16_t> &samples, int per_second = 8000) {
    const auto number = [](std::size_t value, int bytes) {
        std::string text;
        for (int i = 0; i < bytes; ++i, value >>= 8)
            text += static_cast<char>(value & 0xFF);
        return text;
    };
    const std::size_t size = samples.size() * 2;
    const auto rate = static_cast<std::size_t>(per_second);
    std::string file = "RIFF" + number(36 + size, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) +
                       number(1, 2) + number(rate, 4) + number(rate * 2, 4) + number(2, 2) +
                       number(16, 2) + "data" + number(size, 4);
    for (const std::int16_t sample : samples)
        file += number(static_cast<std::uint16_t>(sample), 2);
    return file;
}

} // namespace test
