#include "selvane/core/utf8.h"

#include <algorithm>
#include <iterator>

namespace sv {

namespace {

constexpr char32_t last_code_point = 0x10FFFF;
constexpr unsigned continuation_bits = 6;
constexpr unsigned least_continuation = 0x80;
constexpr unsigned most_continuation = 0xBF;

/// First bytes that are followed alike.
struct Lead {
    unsigned first = 0;
    unsigned last = 0;
    std::size_t following = 0;           // How many bytes.
    unsigned bits = 0;                   // Of the first byte, that count.
    unsigned least = least_continuation; // The second byte; what is outside would be overlong,
    unsigned most = most_continuation;   // a surrogate or too large.
};

constexpr Lead leads[] = {
    {0x00, 0x7F, 0, 0x7F},
    {0xC2, 0xDF, 1, 0x1F},
    {0xE0, 0xE0, 2, 0x0F, 0xA0},
    {0xE1, 0xEC, 2, 0x0F},
    {0xED, 0xED, 2, 0x0F, 0x80, 0x9F},
    {0xEE, 0xEF, 2, 0x0F},
    {0xF0, 0xF0, 3, 0x07, 0x90},
    {0xF1, 0xF3, 3, 0x07},
    {0xF4, 0xF4, 3, 0x07, 0x80, 0x8F},
};

bool isSurrogate(char32_t ch) {
    return 0xD800 <= ch && ch <= 0xDFFF;
}

char byteOf(char32_t bits) {
    return static_cast<char>(static_cast<unsigned char>(bits));
}

/// The bytes that follow the first one, `count` of them.
void appendContinuation(std::string &text, char32_t ch, unsigned count) {
    while (count-- > 0)
        text += byteOf(least_continuation | ((ch >> (count * continuation_bits)) & 0x3F));
}

void append(std::string &text, char32_t ch) {
    if (ch > last_code_point || isSurrogate(ch))
        ch = REPLACEMENT_CHARACTER;
    const unsigned following =
        (ch > 0x7F ? 1U : 0U) + (ch > 0x7FF ? 1U : 0U) + (ch > 0xFFFF ? 1U : 0U);
    constexpr unsigned marks[] = {0x00, 0xC0, 0xE0, 0xF0};
    text += byteOf(marks[following] | ch >> (following * continuation_bits));
    appendContinuation(text, ch, following);
}

} // namespace

CodePoint firstCodePoint(std::string_view text) {
    const auto byte = [&](std::size_t at) {
        return unsigned{static_cast<unsigned char>(text[at])};
    };
    const auto *const lead =
        std::find_if(std::begin(leads), std::end(leads), [&](const Lead &each) {
            return each.first <= byte(0) && byte(0) <= each.last;
        });
    if (lead == std::end(leads))
        return {};
    char32_t value = byte(0) & lead->bits;
    unsigned least = lead->least;
    unsigned most = lead->most;
    for (std::size_t i = 1; i <= lead->following; ++i) {
        if (i == text.size() || byte(i) < least || byte(i) > most)
            return {.bytes = i};
        value = value << continuation_bits | (byte(i) & 0x3F);
        least = least_continuation;
        most = most_continuation;
    }
    return {value, lead->following + 1, true};
}

std::u32string fromUtf8(std::string_view text) {
    std::u32string code_points;
    while (!text.empty()) {
        const CodePoint first = firstCodePoint(text);
        text.remove_prefix(first.bytes);
        code_points += first.value;
    }
    return code_points;
}

std::string toUtf8(std::u32string_view text) {
    std::string bytes;
    for (const char32_t ch : text)
        append(bytes, ch);
    return bytes;
}

std::size_t validUtf8Length(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size()) {
        const CodePoint next = firstCodePoint(text.substr(length));
        if (!next.is_valid)
            break;
        length += next.bytes;
    }
    return length;
}

std::size_t cellCount(std::string_view text) {
    std::size_t count = 0;
    forEachCell(text, [&](auto /*ch*/) { return ++count > 0; });
    return count;
}

std::string_view takeCells(std::string_view &text, std::size_t count) {
    std::size_t length = std::min(count, text.size());
    if (Config::getInstance().getUtf8())
        for (length = 0; count > 0 && length < text.size(); --count)
            length += firstCodePoint(text.substr(length)).bytes;
    const std::string_view taken = text.substr(0, length);
    text.remove_prefix(length);
    return taken;
}

} // namespace sv
