#include "selvane/core/configText.h"

#include "selvane/core/text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <numeric>
#include <sstream>
#include <utility>

namespace sv {

namespace {

constexpr std::size_t most_faults = 20;
constexpr std::size_t most_shown = 60; // Characters of the file in a message.
constexpr std::size_t nearest_key = 2; // Typing errors in a key that is still recognized.

bool isSpace(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

/// The text between two commas.
struct Entry {
    std::string text; // With its blanks: they distinguish comments.
    int line = 0;     // Where it begins. 0: it is all blank.
    int last_line = 0;
};

std::vector<Entry> entriesOf(std::span<const ConfigLine> lines) {
    std::vector<Entry> entries(1);
    for (const ConfigLine &line : lines) {
        for (const char c : line.text) {
            if (c == ',') {
                entries.emplace_back();
                continue;
            }
            Entry &entry = entries.back();
            entry.text += c;
            if (isSpace(c))
                continue;
            entry.line = entry.line == 0 ? line.number : entry.line;
            entry.last_line = line.number;
        }
    }
    std::erase_if(entries, [](const Entry &entry) { return entry.line == 0; });
    return entries;
}

std::vector<std::string> piecesOf(const std::string &text) {
    std::vector<std::string> pieces;
    std::istringstream rest(text);
    for (std::string piece; std::getline(rest, piece, ':');)
        if (!piece.empty())
            pieces.push_back(piece);
    return pieces;
}

std::string quoted(const std::string &text) {
    return "'" + (text.size() > most_shown ? text.substr(0, most_shown) + "..." : text) + "'";
}

/// Whether a '#' begins the text or has blanks on both sides. In "Game #1" it is part of a title.
bool hasComment(const std::string &text) {
    const auto first = std::find_if_not(text.begin(), text.end(), isSpace);
    for (auto mark = std::find(first, text.end(), '#'); mark != text.end();
         mark = std::find(mark + 1, text.end(), '#')) {
        const bool is_alone =
            mark != first && isSpace(mark[-1]) && (mark + 1 == text.end() || isSpace(mark[1]));
        if (mark == first || is_alone)
            return true;
    }
    return false;
}

/// How many letters must be changed, added or removed to turn one word into the other.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t before = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t changed = before + (a[i] == b[j] ? 0 : 1);
            before = std::exchange(row[j + 1], std::min({changed, row[j] + 1, row[j + 1] + 1}));
        }
    }
    return row.back();
}

std::string unknownKey(const std::string &key, std::span<const SettingName> settings) {
    std::string answer = "No setting is called " + quoted(key);
    if (key.size() > most_shown)
        return answer + ".";
    std::string lower = key;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const auto nearest = std::min_element(
        settings.begin(), settings.end(), [&](const SettingName &a, const SettingName &b) {
            return distance(lower, a.key) < distance(lower, b.key);
        });
    if (nearest != settings.end() && distance(lower, nearest->key) <= nearest_key)
        answer += ", but one is called '" + std::string(nearest->key) + "'";
    return answer + ".";
}

template<typename Number>
bool isWhole(const std::string &text) {
    const char *begin = text.data() + (text.size() > 1 && text[0] == '+' ? 1 : 0);
    const char *end = text.data() + text.size();
    Number number{};
    return std::from_chars(begin, end, number).ptr == end;
}

std::string numberFault(const SettingName &setting, const std::string &value) {
    const bool is_float = setting.kind == SettingKind::NUMBER;
    const std::string counts = is_float ? toString(parseFloat(value)) : toString(parseInt(value));
    if (!(is_float ? isWhole<double>(value) : isWhole<int>(value)))
        return quoted(value) + (is_float ? " is no number" : " is no whole number") +
               " and counts as " + counts + ".";
    if (setting.kind == SettingKind::MILLISECONDS && parseInt(value) < 0)
        return counts + " waits as little as 0 does; milliseconds from 0 on are meant.";
    return "";
}

std::string valueFault(const SettingName &setting, const std::string &value) {
    if (setting.kind == SettingKind::TEXT)
        return "";
    if (setting.kind != SettingKind::FLAG)
        return numberFault(setting, value);
    return value == "true" || value == "false"
               ? ""
               : quoted(value) + " counts as false; write true or false.";
}

std::string missingColon(std::string text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos)
        return quoted(text) + " has no colon; a setting is written as key:value,";
    const std::string as_it_is = quoted(text);
    text[equals] = ':';
    return as_it_is + " has no colon; " + quoted(text + ",") + " is meant.";
}

/// Empty if there is none.
std::string faultOf(const Entry &entry, std::span<const SettingName> settings) {
    std::string text = entry.text;
    std::erase_if(text, isSpace);
    const std::vector<std::string> pieces = piecesOf(text);
    if (pieces.empty())
        return quoted(text) + " has no key, and nothing after it is read.";
    if (hasComment(entry.text))
        return "A comment is a line that begins with '#'; here it is part of a setting.";
    if (entry.last_line != entry.line)
        return "A setting ends with a comma; this one goes on in line " +
               std::to_string(entry.last_line) + ".";
    if (text.find(':') == std::string::npos)
        return missingColon(text);
    const auto setting = std::find_if(settings.begin(), settings.end(),
                                      [&](const SettingName &s) { return s.key == pieces[0]; });
    if (setting == settings.end())
        return unknownKey(pieces[0], settings);
    if (pieces.size() > 2)
        return quoted(text) + " has a second colon, which ends the value; between two settings "
                              "stands a comma.";
    return pieces.size() == 2 ? valueFault(*setting, pieces[1]) : "";
}

} // namespace

std::vector<ConfigLine> configLines(const std::string &text) {
    std::vector<ConfigLine> lines;
    std::istringstream stream(text);
    int number = 0;
    for (std::string line; std::getline(stream, line);) {
        ++number;
        if (line.ends_with('\r'))
            line.pop_back();
        if (!line.empty() && !line.starts_with('#'))
            lines.push_back({number, line});
    }
    return lines;
}

std::vector<ConfigFault> configFaults(std::span<const ConfigLine> lines,
                                      std::span<const SettingName> settings) {
    std::vector<ConfigFault> faults;
    for (const Entry &entry : entriesOf(lines)) {
        const std::string text = faultOf(entry, settings);
        if (text.empty())
            continue;
        const bool is_last = faults.size() + 1 == most_faults;
        faults.push_back({entry.line, is_last ? "Here and further on is more of the kind." : text});
        if (is_last)
            break;
    }
    return faults;
}

} // namespace sv
