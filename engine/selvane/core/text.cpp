#include "selvane/core/text.h"

#include "selvane/core/LogManager.h"
#include "selvane/platform/system.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <limits>
#include <new>
#include <system_error>
#include <tuple>
#include <utility>
#include <vector>

namespace sv {

namespace {

struct Entry {
    std::string key;
    std::string value;
};

struct Parse {
    std::string text;
    std::vector<Entry> entries;
};

/// The last parse of match(). Never destroyed: globals may parse before main() and after it.
Parse &lastParse() {
    static Parse &parse = *new Parse;
    return parse;
}

constexpr int parse_log_level = 25;

bool isSpace(char c) {
    return BLANKS.find(c) != std::string_view::npos;
}

/// Takes the next non-empty piece between separators off the front of `rest`; false if there is
/// none.
bool nextPiece(std::string_view &rest, char separator, std::string_view &piece) {
    const std::size_t begin = rest.find_first_not_of(separator);
    if (begin == std::string_view::npos)
        return false;
    rest.remove_prefix(begin);
    piece = rest.substr(0, rest.find(separator));
    rest.remove_prefix(piece.size());
    return true;
}

/// A text for a log line of the parse. Empty if the log drops the line: match() runs once for each
/// key, and would copy the whole text each time.
std::string shown(std::string_view text) {
    return LogManager::getInstance().getLogLevel() < parse_log_level ? "" : printable(text);
}

void logPiece(const char *name, std::string_view piece) {
    if (LogManager::getInstance().getLogLevel() < 28)
        return;
    logLine(28, "\t%s is '%s' (%p)", name, printable(piece).c_str(),
            static_cast<const void *>(piece.data()));
}

/// False if the element consists of colons only: the parse ends there.
bool addEntry(std::string_view element, std::vector<Entry> &entries) {
    logLine(parse_log_level, "\titem number %d", static_cast<int>(entries.size()));
    logPiece("p_element", element);

    std::string_view key;
    const bool has_key = nextPiece(element, ':', key);
    logPiece("token", key);
    if (!has_key)
        return false;
    std::string_view value;
    nextPiece(element, ':', value);
    entries.push_back({std::string(key), std::string(value)});
    logLine(parse_log_level, "\tkey %s", shown(key).c_str());
    logLine(parse_log_level, "\tval %s", shown(value).c_str());
    return true;
}

void logEntries(const std::vector<Entry> &entries) {
    logLine(parse_log_level, "match(): parsed.");
    if (LogManager::getInstance().getLogLevel() < 28)
        return;
    for (std::size_t i = 0; i < entries.size(); ++i)
        logLine(28, "\t%d  %s : %s", static_cast<int>(i), printable(entries[i].key).c_str(),
                printable(entries[i].value).c_str());
}

/// Keeps the entries of `text`; none if there is no memory for them.
void parse(const std::string &text) {
    lastParse() = {};
    Parse fresh{text, {}};
    std::string str = text;
    std::erase_if(str, isSpace);
    const auto count = std::count(str.begin(), str.end(), ',') + 1;
    logLine(parse_log_level, "match(): number of elements allocated is %d",
            static_cast<int>(count));
    fresh.entries.reserve(static_cast<std::size_t>(count));
    std::string_view rest = str;
    for (std::string_view element; nextPiece(rest, ',', element);)
        if (!addEntry(element, fresh.entries))
            break;
    logEntries(fresh.entries);
    lastParse() = std::move(fresh);
}

std::string_view withoutLeadingBlanksAndPlus(std::string_view text) {
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    return text;
}

/// Whether the entries are those of `text` already. At the log levels of the parse every call
/// parses again, so that each is logged.
bool isParsed(const std::string &text) {
    return LogManager::getInstance().getLogLevel() < parse_log_level && text == lastParse().text;
}

std::string valueOf(const std::string &key) {
    const std::vector<Entry> &entries = lastParse().entries;
    logLine(parse_log_level, "match(): Looking for match '%s' among %d items.", key.c_str(),
            static_cast<int>(entries.size()));
    int i = 0;
    for (const Entry &entry : entries) {
        logLine(28, "match(): %d: %s == %s?", i++, shown(entry.key).c_str(), key.c_str());
        if (entry.key == key)
            return entry.value;
    }
    return "";
}

/// Whether a number out of range underflowed rather than overflowed.
bool isTiny(std::string_view number) {
    const std::size_t end = std::min(number.find_first_of("eE"), number.size());
    const std::string_view digits = number.substr(0, end);
    const auto point = static_cast<std::int64_t>(std::min(digits.find('.'), end));
    const auto first = static_cast<std::int64_t>(digits.find_first_of("123456789"));
    const int exponent = end < number.size() ? parseInt(number.substr(end + 1)) : 0;
    return point - first + exponent < 0;
}

} // namespace

std::string_view withoutBlanksAround(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(BLANKS), text.size()));
    return text.substr(0, text.find_last_not_of(BLANKS) + 1);
}

std::string match(const std::string &str, const std::string &find) {
    try {
        logLine(parse_log_level, "match(\"%s\", \"%s\")", shown(str).c_str(), find.c_str());
        if (!str.empty() && !isParsed(str))
            parse(str);
        return valueOf(find);
    } catch (const std::bad_alloc &) {
        logLine("match(): unable to allocate key array!");
        return "";
    }
}

std::string boolToString(bool b) {
    return b ? "true" : "false";
}

std::string toString(int i) {
    return std::to_string(i);
}

std::string toString(float f) {
    std::array<char, 32> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), f,
                                      std::chars_format::general, 6);
    return {digits.data(), result.ptr};
}

int parseInt(std::string_view text) {
    text = withoutLeadingBlanksAndPlus(text);
    int value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        return text.front() == '-' ? std::numeric_limits<int>::min()
                                   : std::numeric_limits<int>::max();
    return value;
}

float parseFloat(std::string_view text) {
    text = withoutLeadingBlanksAndPlus(text);
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    const double limit = std::numeric_limits<float>::max();
    if (result.ec == std::errc::result_out_of_range) {
        const std::string_view number =
            text.substr(0, static_cast<std::size_t>(result.ptr - text.data()));
        value = isTiny(number) ? 0 : (number.front() == '-' ? -2 * limit : 2 * limit);
    }
    if (value > limit)
        return std::numeric_limits<float>::infinity();
    if (value < -limit)
        return -std::numeric_limits<float>::infinity();
    return static_cast<float>(value);
}

std::string printable(std::string_view text) {
    std::string result(text);
    const auto is_control = [](char c) { return (c >= 0 && c < ' ') || c == 127; };
    std::replace_if(result.begin(), result.end(), is_control, '?');
    return result;
}

const char *getTimeString() {
    // Formatting costs as much as writing the line, so it is done once a second.
    static std::array<char, 16> text{"(time error)"};
    static std::tuple shown{false, 0, 0, 0};
    std::tm local{};
    const bool is_known = platform::timeSource().localTime(local);
    const std::tuple now{is_known, local.tm_hour, local.tm_min, local.tm_sec};
    if (now == shown)
        return text.data();
    shown = now;
    if (is_known)
        std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", local.tm_hour, local.tm_min,
                      local.tm_sec);
    else
        std::snprintf(text.data(), text.size(), "(time error)");
    return text.data();
}

} // namespace sv
