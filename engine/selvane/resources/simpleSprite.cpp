#include "selvane/resources/simpleSprite.h"

#include "selvane/core/LogManager.h"
#include "selvane/core/text.h"
#include "selvane/core/utf8.h"
#include "selvane/resources/spriteFile.h"

#include <string>

namespace sv {

namespace {

constexpr SpriteFormat simple_format{"RM::loadSimpleSprite()", "or white.", "."};

void logEndOfFile() {
    logLine("RM::loadSimpleSprite(): Error! Unexpected end of file.");
}

void logRead(const std::string &line) {
    logLine(20, "\tLine %2d: '%s'", line_number, line.c_str());
}

/// False, with log lines, if the file has no more lines; `missing` names what should be in this
/// one.
bool readHeaderLine(std::istream &file, const char *missing, std::string &line) {
    line = getLine(file, true);
    if (!file) {
        logEndOfFile();
        logFault(line_number, "\tMissing %s.", missing);
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
        logFault(line_number, "RM::loadSimpleSprite(): Error line %d! Number of frames is %d.",
                 line_number, frames);
    return frames >= 1;
}

/// A number that the message about it quotes as it was written.
bool readNumber(std::istream &file, const char *missing, const char *name, int minimum,
                int &number) {
    std::string line;
    if (!readHeaderLine(file, missing, line))
        return false;
    number = parseInt(line);
    if (number < minimum)
        logFault(line_number, "RM::loadSimpleSprite(): Error line %d! %s is '%s'.", line_number,
                 name, line.c_str());
    return number >= minimum;
}

bool readColor(std::istream &file, SpriteHeader &header) {
    if (!readHeaderLine(file, "color (a string)", header.color_name))
        return false;
    if (const auto color = colorFromName(header.color_name)) {
        header.color = *color;
        return true;
    }
    logFault(line_number, "RM::loadSimpleSprite(): Error line %d! Unrecognized color '%s'.",
             line_number, header.color_name.c_str());
    logValidColors(simple_format);
    return false;
}

bool readHeader(std::istream &file, SpriteHeader &header) {
    return readFrames(file, header.frames) &&
           readNumber(file, "width (an integer)", "Width", 1, header.width) &&
           readNumber(file, "height (an integer)", "Height", 1, header.height) &&
           readNumber(file, "slowdown (an integer)", "Slowdown", 0, header.slowdown) &&
           readColor(file, header);
}

/// Appends one row of a frame to `rows`; both numbers count from 0.
bool readRow(std::istream &file, const SpriteHeader &header, int frame, int row,
             std::string &rows) {
    const std::string line = getLine(file, true);
    if (line.empty()) {
        logEndOfFile();
        noteFault(line_number, (file ? "Empty line, " : "Unexpected end of file, ") +
                                   ("row " + std::to_string(row + 1)) + " of frame " +
                                   std::to_string(frame + 1) + ".");
        logLine("\tReading frame %d of %d, row %d of %d.", frame + 1, header.frames, row + 1,
                header.height);
        return false;
    }
    const auto length = static_cast<int>(cellCount(line));
    if (length != header.width) {
        logLine("RM::loadSimpleSprite(): Error line %d!", line_number);
        logLine("\tLine %2d: '%s'", line_number, line.c_str());
        logFault(line_number, "\tWidth is %d, expected %d.", length, header.width);
        return false;
    }
    logRead(line);
    rows += line;
    return true;
}

/// Reads one frame, counted from 0, and adds it to the sprite.
bool readFrame(std::istream &file, const SpriteHeader &header, int frame, Sprite &sprite) {
    logLine(15, "RM::loadSimpleSprite(): Reading frame %d of %d.", frame, header.frames);
    std::string rows;
    for (int row = 0; row < header.height; ++row)
        if (!readRow(file, header, frame, row, rows))
            return false;
    return addFrame(sprite, Frame(header.width, header.height, rows), simple_format);
}

bool isAtEnd(std::istream &file) {
    // Peek first: the end is expected here, and getLine() would log it as an error.
    if (file.peek() == std::istream::traits_type::eof())
        return true;
    const std::string line = getLine(file, true);
    if (file.eof() && line.empty())
        return true;
    logLine("RM::loadSimpleSprite(): Error line %d!", line_number);
    logFault(line_number, "\tExtra file data: '%s'", line.c_str());
    return false;
}

} // namespace

std::unique_ptr<Sprite> loadSimpleSprite(std::istream &file) {
    SpriteHeader header;
    if (!readHeader(file, header))
        return nullptr;
    logHeader(header);
    logLine(5, "\t       Color: %s", header.color_name.c_str());
    auto sprite = createSprite(header, simple_format);
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
