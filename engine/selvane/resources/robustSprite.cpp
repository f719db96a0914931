#include "selvane/resources/robustSprite.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/resources/spriteColors.h"
#include "selvane/resources/spriteFile.h"

#include <string>

namespace sv {

namespace {

constexpr int missing = -1;
constexpr char default_color_name[] = "default";

constexpr SpriteFormat robust_format{"RM::loadRobustSprite()", "and white.", ""};

bool readRequired(Lines &lines, const char *key, int &value) {
    value = matchLineInt(&lines, key);
    if (value == missing)
        logFault(line_number, "RM::loadRobustSprite(): Error! Missing '%s' in header.", key);
    return value != missing;
}

void logMissing(const char *key) {
    logLine(5, "RM::loadRobustSprite(): Note! No '%s' in header.", key);
}

std::string readColorName(Lines &lines) {
    std::string name = matchLineStr(&lines, "color");
    if (!name.empty())
        return name;
    logLine(5, "RM::loadRobustSprite(): Warning! No '%s' in header.", "color");
    return default_color_name;
}

char readTransparency(Lines &lines) {
    const std::string value = matchLineStr(&lines, "transparency");
    if (value.empty()) {
        logMissing("transparency");
        return NO_TRANSPARENCY;
    }
    if (value.front() < 0 && Config::getInstance().getUtf8())
        logLine("RM::loadRobustSprite(): Warning! Transparency '%s' is no ASCII character, and "
                "nothing is left out.",
                value.c_str());
    return value.front();
}

int readSlowdown(Lines &lines) {
    const int value = matchLineInt(&lines, "slowdown");
    if (value != missing)
        return value;
    logMissing("slowdown");
    return 0;
}

void logUnused(const Lines &lines, const char *section) {
    if (lines.empty())
        return;
    logLine(1, "RM::loadRobustSprite(): Warning! Unused %s lines:", section);
    for (const Line &line : lines)
        logLine(1, "\t'%s'", line.text.c_str());
}

void logTransparency(char transparency) {
    if (transparency == NO_TRANSPARENCY)
        logLine(5, "\tTransparency: (none)");
    else
        logLine(5, "\tTransparency: %c", transparency);
}

bool readHeader(std::istream &file, SpriteHeader &header) {
    Lines lines = readData(file, "HEADER");
    if (lines.empty())
        return false;
    logLine(20, "\tAfter reading header: line number is '%d'", line_number);
    header.frames_line = lineOf(lines, "frames");
    header.color_line = lineOf(lines, "color");
    if (!readRequired(lines, "frames", header.frames) ||
        !readRequired(lines, "width", header.width) ||
        !readRequired(lines, "height", header.height))
        return false;
    header.color_name = readColorName(lines);
    header.transparency = readTransparency(lines);
    header.slowdown = readSlowdown(lines);
    logUnused(lines, "HEADER");
    logHeader(header);
    logTransparency(header.transparency);
    return true;
}

bool setColor(Sprite &sprite, const SpriteHeader &header) {
    const std::string &name = header.color_name;
    const auto color = name == default_color_name ? COLOR_DEFAULT : colorFromName(name);
    const auto rgb = rgbFromText(name);
    if (!color && !rgb) {
        logFault(header.color_line, "RM::loadRobustSprite(): Error! Unrecognized color '%s'.",
                 name.c_str());
        logValidColors(robust_format);
        return false;
    }
    if (rgb)
        sprite.setColor(*rgb);
    else
        sprite.setColor(*color);
    logLine(5, "\t       Color: %s", name.c_str());
    return true;
}

bool takeFrame(Lines &body, const SpriteHeader &header, int first_line, Sprite &sprite) {
    const Frame frame = readFrame(&body, header.width, header.height, first_line);
    if (!frame.getString().empty())
        return addFrame(sprite, frame, robust_format);
    logFault(line_number, "RM::loadRobustSprite(): Error! No frame data to add.");
    return false;
}

/// Reads all frames of the body; false, with log lines, if one is bad or something is left.
bool takeFrames(Lines &body, const SpriteHeader &header, int header_end, Sprite &sprite) {
    // Messages count only rows: the "end" lines of earlier frames are not in their numbers, so
    // later frames are named a little early. Logs are compared by these numbers, so they stay.
    int first_line = header_end + 2;
    for (int i = 0; i < header.frames; ++i, first_line += header.height)
        if (!takeFrame(body, header, first_line, sprite))
            return false;
    if (body.empty())
        return true;
    noteFault(body.front().number, "Extra BODY: '" + body.front().text + "'");
    logLine(1, "RM::loadRobustSprite(): Error! Extra BODY:");
    for (const Line &line : body)
        logLine(1, "\tLine %d: %s", line_number++, line.text.c_str());
    return false;
}

bool readFooter(std::istream &file) {
    Lines lines = readData(file, "FOOTER");
    if (matchLineStr(&lines, "version").empty()) {
        logFault(line_number, "RM::loadRobustSprite(): Error! Missing '%s' in FOOTER (line %d).",
                 "version", line_number);
        return false;
    }
    logUnused(lines, "FOOTER");
    return true;
}

} // namespace

std::unique_ptr<Sprite> loadRobustSprite(std::istream &file) {
    SpriteHeader header;
    if (!readHeader(file, header))
        return nullptr;
    const int header_end = line_number;
    Lines body = readData(file, "BODY");
    if (body.empty())
        return nullptr;
    logLine(20, "\tAfter reading body: line number is '%d'", line_number);
    auto sprite = createSprite(header, robust_format);
    if (!sprite || !setColor(*sprite, header) || !takeFrames(body, header, header_end, *sprite) ||
        !readColors(file, *sprite) || !readFooter(file))
        return nullptr;
    return sprite;
}

} // namespace sv
