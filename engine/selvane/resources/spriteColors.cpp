#include "selvane/resources/spriteColors.h"

#include "selvane/core/LogManager.h"
#include "selvane/core/text.h"
#include "selvane/resources/spriteFile.h"

#include <algorithm>
#include <map>
#include <utility>

namespace sv {

namespace {

constexpr char section[] = "COLORS";
constexpr char own_color[] = "."; // The sprite's.

/// The eight colours and those that the section defines.
using Letters = std::map<char, std::optional<Rgb>>;

Letters namedLetters() {
    Letters letters{{own_color[0], std::nullopt}};
    for (int color = BLACK; color <= WHITE; ++color)
        letters[COLOR_LETTERS[static_cast<std::size_t>(color)]] = Rgb(static_cast<Color>(color));
    return letters;
}

/// The stream is then where it was.
bool isNext(std::istream &file, const std::string &wanted) {
    if (!file.good())
        return false;
    const auto place = file.tellg();
    std::string line;
    std::getline(file, line);
    file.clear();
    file.seekg(place);
    return line == wanted || line == wanted + '\r';
}

/// Removes the lines "letter X #rrggbb". False, with a log line, if one is not like that.
bool takeLetters(Lines &lines, Letters &letters) {
    constexpr std::string_view key = "letter ";
    constexpr std::size_t color_place = key.size() + 2;
    const Line *bad = nullptr;
    for (const Line &line : lines) {
        if (!line.text.starts_with(key))
            continue;
        const std::string_view text = line.text;
        const auto color = rgbFromText(text.substr(std::min(color_place, text.size())));
        if (!color || text[key.size()] <= ' ' || text[key.size() + 1] != ' ')
            bad = bad ? bad : &line;
        else
            letters[text[key.size()]] = color;
    }
    if (bad)
        logFault(bad->number,
                 "RM::loadRobustSprite(): Error! Line %d: '%s' should be 'letter X #rrggbb'.",
                 bad->number, printable(bad->text).c_str());
    std::erase_if(lines, [&](const Line &line) { return line.text.starts_with(key); });
    return !bad;
}

/// The colours of a frame's rows, which stand in these lines; none, with a log line, if one is not
/// known.
std::vector<std::optional<Rgb>> colorsOf(const Frame &rows, const Letters &letters,
                                         const std::vector<int> &row_lines) {
    std::vector<std::optional<Rgb>> colors;
    for (const char letter : rows.getString()) {
        const auto found = letters.find(letter);
        if (found == letters.end()) {
            const int line = row_lines[colors.size() / static_cast<std::size_t>(rows.getWidth())];
            logFault(line, "RM::loadRobustSprite(): Error! Line %d: No color has the letter '%c'.",
                     line, letter);
            return {};
        }
        colors.push_back(found->second);
    }
    return colors;
}

bool takeColors(Lines &lines, const Letters &letters, int index, Sprite &sprite) {
    const int line = lines.empty() ? line_number - 1 : lines.front().number;
    std::vector<int> row_lines;
    const auto height = static_cast<std::size_t>(sprite.getHeight());
    for (std::size_t row = 0; row < std::min(height, lines.size()); ++row)
        row_lines.push_back(lines[row].number);
    const Frame rows = readFrame(&lines, sprite.getWidth(), sprite.getHeight(), line - 1);
    std::vector<std::optional<Rgb>> colors = colorsOf(rows, letters, row_lines);
    if (colors.empty()) {
        logFault(line, "RM::loadRobustSprite(): Error! No colors for frame %d of %d.", index + 1,
                 sprite.getFrameCount());
        return false;
    }
    sprite.setFrameColors(index, std::move(colors));
    return true;
}

} // namespace

bool readColors(std::istream &file, Sprite &sprite) {
    if (!isNext(file, std::string("<") + section + ">"))
        return true;
    Lines lines = readData(file, section);
    Letters letters = namedLetters();
    if (!takeLetters(lines, letters))
        return false;
    for (int i = 0; i < sprite.getFrameCount(); ++i)
        if (!takeColors(lines, letters, i, sprite))
            return false;
    if (!lines.empty())
        logFault(lines.front().number, "RM::loadRobustSprite(): Error! Line %d: Extra COLORS: '%s'",
                 lines.front().number, lines.front().text.c_str());
    return lines.empty();
}

} // namespace sv
