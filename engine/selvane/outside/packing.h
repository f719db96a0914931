/// Numbers and texts as few bytes: a number takes one byte for every seven bits that it has.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace sv {

void packNumber(std::string &bytes, std::uint64_t number);
/// Small numbers are short whatever their sign.
void packSigned(std::string &bytes, std::int64_t number);
void packText(std::string &bytes, std::string_view text);

// These remove what they read from the front of `bytes`; none if it is not whole.

std::optional<std::uint64_t> unpackNumber(std::string_view &bytes);
std::optional<std::int64_t> unpackSigned(std::string_view &bytes);
std::optional<std::string_view> unpackText(std::string_view &bytes);

} // namespace sv
