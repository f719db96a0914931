#include "selvane/outside/packing.h"

namespace sv {

void packNumber(std::string &bytes, std::uint64_t number) {
    for (; number >= 0x80; number >>= 7)
        bytes += static_cast<char>(number | 0x80);
    bytes += static_cast<char>(number);
}

void packSigned(std::string &bytes, std::int64_t number) {
    // 0, -1, 1, -2, 2 become 0, 1, 2, 3, 4.
    const auto twice = static_cast<std::uint64_t>(number) << 1;
    packNumber(bytes, number < 0 ? ~twice : twice);
}

void packText(std::string &bytes, std::string_view text) {
    packNumber(bytes, text.size());
    bytes += text;
}

std::optional<std::uint64_t> unpackNumber(std::string_view &bytes) {
    std::uint64_t number = 0;
    for (unsigned shift = 0; shift < 64 && !bytes.empty(); shift += 7) {
        const auto byte = static_cast<unsigned char>(bytes.front());
        bytes.remove_prefix(1);
        number |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
        if (byte < 0x80)
            return number;
    }
    return std::nullopt;
}

std::optional<std::int64_t> unpackSigned(std::string_view &bytes) {
    const auto number = unpackNumber(bytes);
    if (!number)
        return std::nullopt;
    const std::uint64_t half = *number >> 1;
    return static_cast<std::int64_t>(*number & 1 ? ~half : half);
}

std::optional<std::string_view> unpackText(std::string_view &bytes) {
    const auto size = unpackNumber(bytes);
    if (!size || *size > bytes.size())
        return std::nullopt;
    const std::string_view text = bytes.substr(0, *size);
    bytes.remove_prefix(*size);
    return text;
}

} // namespace sv
