#include "selvane/resources/robustSprite.h"

#include "selvane/core/LogManager.h"
#include "selvane/resources/spriteReading.h"

#include <string>

namespace sv {

namespace {

constexpr int missing = -1;
constexpr char default_color_name[] = "default";

struct Header {
    int frames = 0;
    int width = 0;
    int height = 0;
    int slowdown = 0;
    char transparency = NO_TRANSPARENCY;
    std::string color_name;
    int end_line = 0; // That of the header's closing tag.
};

bool readRequired(Lines &lines, const char *key, int &value) {
    value = matchLineInt(&lines, key);
    if (value == missing)
        logLine("RM::loadRobustSprite(): Error! Missing '%s' in header.", key);
    return value != missing;
}

void noteMissing(const char *key) {
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
    if (!value.empty())
        return value.front();
    noteMissing("transparency");
    return NO_TRANSPARENCY;
}

int readSlowdown(Lines &lines) {
    const int value = matchLineInt(&lines, "slowdown");
    if (value != missing)
        return value;
    noteMissing("slowdown");
    return 0;
}

void logUnused(const Lines &lines, const char *section) {
    if (lines.empty())
        return;
    logLine(1, "RM::loadRobustSprite(): Warning! Unused %s lines:", section);
    for (const Line &line : lines)
        logLine(1, "\t'%s'", line.text.c_str());
}

void logHeader(const Header &header) {
    logLine(5, "\t      Frames: %d", header.frames);
    logLine(5, "\t       Width: %d", header.width);
    logLine(5, "\t      Height: %d", header.height);
    logLine(5, "\t    Slowdown: %d", header.slowdown);
    if (header.transparency == NO_TRANSPARENCY)
        logLine(5, "\tTransparency: (none)");
    else
        logLine(5, "\tTransparency: %c", header.transparency);
}

bool readHeader(std::istream &file, Header &header) {
    Lines lines = readData(file, "HEADER");
    if (lines.empty())
        return false;
    logLine(20, "\tAfter reading header: line number is '%d'", line_number);
    if (!readRequired(lines, "frames", header.frames) ||
        !readRequired(lines, "width", header.width) ||
        !readRequired(lines, "height", header.height))
        return false;
    header.color_name = readColorName(lines);
    header.transparency = readTransparency(lines);
    header.slowdown = readSlowdown(lines);
    logUnused(lines, "HEADER");
    logHeader(header);
    header.end_line = line_number;
    return true;
}

bool setColor(Sprite &sprite, const std::string &name) {
    const auto color = name == default_color_name ? COLOR_DEFAULT : colorFromName(name);
    if (!color) {
        logLine("RM::loadRobustSprite(): Error! Unrecognized color '%s'.", name.c_str());
        logLine("  Valid colors are: black, red, green, yellow,");
        logLine("                    blue, magenta, cyan and white.");
        return false;
    }
    sprite.setColor(*color);
    logLine(5, "\t       Color: %s", name.c_str());
    return true;
}

std::unique_ptr<Sprite> createSprite(const Header &header) {
    auto sprite = std::make_unique<Sprite>(header.frames);
    if (sprite->getMaxFrameCount() != header.frames) {
        logLine("RM::loadRobustSprite(): Error! Unable to create Sprite.");
        return nullptr;
    }
    sprite->setWidth(header.width);
    sprite->setHeight(header.height);
    sprite->setSlowdown(header.slowdown);
    sprite->setTransparency(header.transparency);
    if (!setColor(*sprite, header.color_name))
        return nullptr;
    return sprite;
}

bool addFrame(Sprite &sprite, const Frame &frame, int max_frames) {
    if (frame.getString().empty()) {
        logLine("RM::loadRobustSprite(): Error! No frame data to add.");
        return false;
    }
    if (sprite.addFrame(frame) == 0)
        return true;
    logLine("RM::loadRobustSprite(): Error! Cannot add Frame.");
    logLine("\tFramecount is %d, max is %d", sprite.getFrameCount() + 1, max_frames);
    return false;
}

/// All frames of the body, and nothing besides.
bool takeFrames(Lines &body, const Header &header, Sprite &sprite) {
    // Messages count rows alone: the "end" lines of earlier frames are not in their numbers, and
    // later frames are named a little early. Logs are compared by these numbers, so they stay.
    int first_line = header.end_line + 2;
    for (int i = 0; i < header.frames; ++i, first_line += header.height)
        if (!addFrame(sprite, readFrame(&body, header.width, header.height, first_line),
                      header.frames))
            return false;
    if (body.empty())
        return true;
    logLine(1, "RM::loadRobustSprite(): Error! Extra BODY:");
    for (const Line &line : body)
        logLine(1, "\tLine %d: %s", line_number++, line.text.c_str());
    return false;
}

bool readFooter(std::istream &file) {
    Lines lines = readData(file, "FOOTER");
    if (matchLineStr(&lines, "version").empty()) {
        logLine("RM::loadRobustSprite(): Error! Missing '%s' in FOOTER (line %d).", "version",
                line_number);
        return false;
    }
    logUnused(lines, "FOOTER");
    return true;
}

} // namespace

std::unique_ptr<Sprite> loadRobustSprite(std::istream &file) {
    Header header;
    if (!readHeader(file, header))
        return nullptr;
    Lines body = readData(file, "BODY");
    if (body.empty())
        return nullptr;
    logLine(20, "\tAfter reading body: line number is '%d'", line_number);
    auto sprite = createSprite(header);
    if (!sprite || !takeFrames(body, header, *sprite) || !readFooter(file))
        return nullptr;
    return sprite;
}

} // namespace sv
