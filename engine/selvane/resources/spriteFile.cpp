#include "selvane/resources/spriteFile.h"

#include "selvane/core/LogManager.h"
#include "selvane/core/text.h"
#include "selvane/core/utf8.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <utility>

namespace sv {

int line_number = 0;
SpriteFault sprite_fault;

namespace {

constexpr int no_value = -1;
constexpr std::size_t longest_reason = 200;

/// Removes the lines that begin with `token` and calls `use` with each, in their order.
template<typename Use>
void takeMatches(Lines &lines, const char *token, Use use) {
    std::erase_if(lines, [&](const Line &line) {
        if (!line.text.starts_with(token))
            return false;
        use(line);
        return true;
    });
}

/// What follows the key at the line's beginning and one separator.
std::string valueOf(const Line &line, const char *key) {
    if (line.text == key) {
        noteFault(line.number, "Key '" + line.text + "' has no value.");
        throw KeyWithoutValue("line " + std::to_string(line.number) + ": key '" + key +
                              "' has no value");
    }
    return line.text.substr(std::strlen(key) + 1);
}

/// Removes the rows of a frame from the list and appends them to `rows`. False, with log lines, if
/// one is missing or has another length. `line` counts with them; it is raised before each row, so
/// the messages name the line after it. Logs are compared by these numbers, so they stay.
bool takeRows(Lines &lines, int width, int height, int &line, std::string &rows) {
    for (int row = 0; row < height; ++row) {
        ++line;
        if (lines.empty()) {
            logFault(line_number, "\tError! Line %d: No more frame data before 'end'.", line + 1);
            return false;
        }
        const std::string &text = lines.front().text;
        logLine(20, "\tLine %2d: '%s'", line, text.c_str());
        const auto length = static_cast<int>(cellCount(text));
        if (length != width) {
            logFault(lines.front().number,
                     "\tError! Line %d: Line length is %d (frame width is %d).", line, length,
                     width);
            logLine("\tLine %d: '%s'", line, text.c_str());
            return false;
        }
        rows += text;
        lines.pop_front();
    }
    return true;
}

/// Removes the line that ends a frame; false, with log lines, if it is missing.
bool takeFrameEnd(Lines &lines, int line) {
    if (lines.empty()) {
        logFault(line_number, "\tError! Line %d: No more frame data before 'end'.", line + 1);
        return false;
    }
    if (lines.front().text != FRAME_END) {
        // By now the whole section has been read, so line_number is that of its end. This stays, as
        // logs are compared by it.
        logFault(lines.front().number, "\tError! Line %d: Expected '%s'.", line_number, FRAME_END);
        logLine("\tLine %d: '%s'", line + 1, lines.front().text.c_str());
        return false;
    }
    lines.pop_front();
    return true;
}

/// Of "RM::loadSimpleSprite(): Error line 3! Width is '0'." the second sentence.
std::string_view reasonIn(std::string_view message) {
    const std::size_t error = message.find("Error");
    const std::size_t mark = message.find("! ");
    if (error < mark && mark != std::string_view::npos)
        message.remove_prefix(mark + 2);
    if (message.starts_with("Line "))
        message.remove_prefix(message.find(": ") + 2);
    return withoutBlanksAround(message);
}

} // namespace

void noteFault(int line, const std::string &reason) {
    if (sprite_fault.reason.empty())
        sprite_fault = {line, printable(reason.substr(0, longest_reason))};
}

void logFault(int line, const char *fmt, ...) {
    LogManager &log = LogManager::getInstance();
    std::array<char, 2 * longest_reason> message{};
    std::va_list args;
    va_start(args, fmt);
    std::vsnprintf(message.data(), message.size(), fmt, args);
    va_end(args);
    noteFault(line, std::string(reasonIn(message.data())));
    va_start(args, fmt);
    log.vwriteLog(log.getLogLevel(), fmt, args);
    va_end(args);
}

std::string getLine(std::istream &file, bool count_line) {
    std::string line;
    if (!std::getline(file, line)) {
        logLine("getLine(): Error! Unexpected end of file.");
        return "";
    }
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    if (count_line)
        ++line_number;
    return line;
}

Lines readData(std::istream &file, const std::string &delimiter) {
    const std::string opening = "<" + delimiter + ">";
    const std::string closing = "</" + delimiter + ">";
    const std::string first = getLine(file, true);
    if (first != opening) {
        logFault(line_number, "readData(): Error line %d! Expected '%s', have '%s'.", line_number,
                 opening.c_str(), first.c_str());
        return {};
    }
    Lines lines;
    for (std::string line = getLine(file, true); line != closing; line = getLine(file, true)) {
        if (line.empty()) {
            if (file)
                noteFault(line_number, "Empty line before '" + closing + "'.");
            logFault(line_number, "readData(): Error! Never encountered '%s'.", closing.c_str());
            return {};
        }
        lines.push_back({std::move(line), line_number});
    }
    return lines;
}

int matchLineInt(Lines *lines, const char *token) {
    int found = no_value;
    takeMatches(*lines, token, [&](const Line &line) {
        if (found != no_value)
            logLine(1, "matchLineInt(): Warning! '%s' matches multiple lines.", line.text.c_str());
        found = parseInt(valueOf(line, token));
    });
    return found;
}

std::string matchLineStr(Lines *lines, const char *token) {
    std::string found;
    takeMatches(*lines, token, [&](const Line &line) {
        if (!found.empty())
            logLine(1, "matchLineStr(): Warning! '%s' matches multiple lines.", line.text.c_str());
        found = valueOf(line, token);
    });
    return found;
}

int lineOf(const Lines &lines, const char *token) {
    int found = line_number;
    for (const Line &line : lines)
        if (line.text.starts_with(token))
            found = line.number;
    return found;
}

Frame readFrame(Lines *lines, int width, int height, int first_line) {
    std::string rows;
    int line = first_line;
    if (!takeRows(*lines, width, height, line, rows) || !takeFrameEnd(*lines, line))
        return {};
    return {width, height, rows};
}

void logHeader(const SpriteHeader &header) {
    logLine(5, "\t      Frames: %d", header.frames);
    logLine(5, "\t       Width: %d", header.width);
    logLine(5, "\t      Height: %d", header.height);
    logLine(5, "\t    Slowdown: %d", header.slowdown);
}

void logValidColors(const SpriteFormat &format) {
    logLine("  Valid colors are: black, red, green, yellow,");
    logLine("                    blue, magenta, cyan %s", format.last_color);
}

std::unique_ptr<Sprite> createSprite(const SpriteHeader &header, const SpriteFormat &format) {
    auto sprite = std::make_unique<Sprite>(header.frames);
    if (sprite->getMaxFrameCount() != header.frames) {
        logFault(header.frames_line, "%s: Error! Unable to create Sprite.", format.loader);
        return nullptr;
    }
    sprite->setWidth(header.width);
    sprite->setHeight(header.height);
    sprite->setSlowdown(header.slowdown);
    sprite->setColor(header.color);
    sprite->setTransparency(header.transparency);
    return sprite;
}

bool addFrame(Sprite &sprite, const Frame &frame, const SpriteFormat &format) {
    if (sprite.addFrame(frame) == 0)
        return true;
    logFault(line_number, "%s: Error! Cannot add Frame.", format.loader);
    logLine("\tFramecount is %d, max is %d%s", sprite.getFrameCount() + 1,
            sprite.getMaxFrameCount(), format.line_end);
    return false;
}

} // namespace sv
