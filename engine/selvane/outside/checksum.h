/// A checksum that tells a changed or cut piece of a file from a whole one: FNV-1a of 64 bits.
#pragma once

#include <cstdint>
#include <string_view>

namespace sv {

inline std::uint64_t checksum(std::string_view bytes) {
    std::uint64_t sum = 0xcbf29ce484222325;
    for (const char byte : bytes)
        sum = (sum ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    return sum;
}

} // namespace sv
