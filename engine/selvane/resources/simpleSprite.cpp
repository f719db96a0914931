#include "selvane/resources/simpleSprite.h"

#include "selvane/core/LogManager.h"
#include "selvane/core/text.h"
#include "selvane/resources/spriteReading.h"

#include <string>

namespace sv {

namespace {

struct Header {
    int frames = 0;
    int width = 0;
    int height = 0;
    int slowdown = 0;
    std::string color_name;
    Color color = COLOR_DEFAULT;
};

void logEndOfFile() {
    logLine("RM::loadSimpleSprite(): Error! Unexpected end of file.");
}

void logRead(const std::string &line) {
    logLine(20, "\tLine %2d: '%s'", line_number, line.c_str());
}

/// False, with log lines, if the file has no more lines; `missing` says what stood in this one.
bool readHeaderLine(std::istream &file, const char *missing, std::string &line) {
    line = getLine(file, true);
    if (!file) {
        logEndOfFile();
        logLine("\tMissing %s.", missing);
        return false;
    }
    logRead(line);
    return true;
}

bool readFrames(std::istream &file, int &frames) {
    std::string line;
    if (!readHeaderLine(file, "frames (an integer)", line))
        return false;
    frames = parseInt(line);
    if (frames < 1)
        logLine("RM::loadSimpleSprite(): Error line %d! Number of frames is %d.", line_number,
                frames);
    return frames >= 1;
}

/// A number that a message quotes as it was written.
bool readNumber(std::istream &file, const char *missing, const char *name, int minimum,
                int &number) {
    std::string line;
    if (!readHeaderLine(file, missing, line))
        return false;
    number = parseInt(line);
    if (number < minimum)
        logLine("RM::loadSimpleSprite(): Error line %d! %s is '%s'.", line_number, name,
                line.c_str());
    return number >= minimum;
}

bool readColor(std::istream &file, Header &header) {
    if (!readHeaderLine(file, "color (a string)", header.color_name))
        return false;
    if (const auto color = colorFromName(header.color_name)) {
        header.color = *color;
        return true;
    }
    logLine("RM::loadSimpleSprite(): Error line %d! Unrecognized color '%s'.", line_number,
            header.color_name.c_str());
    logLine("  Valid colors are: black, red, green, yellow,");
    logLine("                    blue, magenta, cyan or white.");
    return false;
}

bool readHeader(std::istream &file, Header &header) {
    return readFrames(file, header.frames) &&
           readNumber(file, "width (an integer)", "Width", 1, header.width) &&
           readNumber(file, "height (an integer)", "Height", 1, header.height) &&
           readNumber(file, "slowdown (an integer)", "Slowdown", 0, header.slowdown) &&
           readColor(file, header);
}

void logHeader(const Header &header) {
    logLine(5, "\t      Frames: %d", header.frames);
    logLine(5, "\t       Width: %d", header.width);
    logLine(5, "\t      Height: %d", header.height);
    logLine(5, "\t    Slowdown: %d", header.slowdown);
    logLine(5, "\t       Color: %s", header.color_name.c_str());
}

std::unique_ptr<Sprite> createSprite(const Header &header) {
    auto sprite = std::make_unique<Sprite>(header.frames);
    if (sprite->getMaxFrameCount() != header.frames) {
        logLine("RM::loadSimpleSprite(): Error! Unable to create Sprite.");
        return nullptr;
    }
    sprite->setWidth(header.width);
    sprite->setHeight(header.height);
    sprite->setSlowdown(header.slowdown);
    sprite->setColor(header.color);
    sprite->setTransparency(NO_TRANSPARENCY);
    return sprite;
}

/// Appends one row of a frame to `rows`; both numbers count from 0.
bool readRow(std::istream &file, const Header &header, int frame, int row, std::string &rows) {
    const std::string line = getLine(file, true);
    if (line.empty()) {
        logEndOfFile();
        logLine("\tReading frame %d of %d, row %d of %d.", frame + 1, header.frames, row + 1,
                header.height);
        return false;
    }
    const auto length = static_cast<int>(line.size());
    if (length != header.width) {
        logLine("RM::loadSimpleSprite(): Error line %d!", line_number);
        logLine("\tLine %2d: '%s'", line_number, line.c_str());
        logLine("\tWidth is %d, expected %d.", length, header.width);
        return false;
    }
    logRead(line);
    rows += line;
    return true;
}

/// Reads one frame, counted from 0, and gives it to the sprite.
bool readFrame(std::istream &file, const Header &header, int frame, Sprite &sprite) {
    logLine(15, "RM::loadSimpleSprite(): Reading frame %d of %d.", frame, header.frames);
    std::string rows;
    for (int row = 0; row < header.height; ++row)
        if (!readRow(file, header, frame, row, rows))
            return false;
    if (sprite.addFrame(Frame(header.width, header.height, rows)) == 0)
        return true;
    logLine("RM::loadSimpleSprite(): Error! Cannot add Frame.");
    logLine("\tFramecount is %d, max is %d.", sprite.getFrameCount() + 1, header.frames);
    return false;
}

bool isAtEnd(std::istream &file) {
    // Looked at before it is read: a good file's end is expected, and getLine would complain.
    if (file.peek() == std::istream::traits_type::eof())
        return true;
    const std::string line = getLine(file, true);
    if (file.eof() && line.empty())
        return true;
    logLine("RM::loadSimpleSprite(): Error line %d!", line_number);
    logLine("\tExtra file data: '%s'", line.c_str());
    return false;
}

} // namespace

std::unique_ptr<Sprite> loadSimpleSprite(std::istream &file) {
    Header header;
    if (!readHeader(file, header))
        return nullptr;
    logHeader(header);
    auto sprite = createSprite(header);
    if (!sprite)
        return nullptr;
    for (int frame = 0; frame < header.frames; ++frame)
        if (!readFrame(file, header, frame, *sprite))
            return nullptr;
    if (!isAtEnd(file))
        return nullptr;
    return sprite;
}

} // namespace sv
