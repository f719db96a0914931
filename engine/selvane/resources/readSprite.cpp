#include "selvane/resources/readSprite.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/assets.h"
#include "selvane/core/text.h"
#include "selvane/core/utf8.h"
#include "selvane/platform/system.h"
#include "selvane/resources/robustSprite.h"
#include "selvane/resources/simpleSprite.h"
#include "selvane/resources/spriteFile.h"

namespace sv {

namespace {

std::streamoff sizeOf(std::istream &file) {
    file.seekg(0, std::ios::end);
    const std::streamoff size = file.tellg();
    file.seekg(0);
    return size;
}

/// Names the first line that is no UTF-8, if the configuration asks for it.
void warnIfNotUtf8(std::istream &file, const std::string &filename) {
    if (!Config::getInstance().getUtf8())
        return;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (const std::size_t valid = validUtf8Length(line); valid < line.size()) {
            logLine("RM::loadSprite(): Warning! File '%s', line %d is no UTF-8 from byte %d on.",
                    filename.c_str(), number, static_cast<int>(valid) + 1);
            break;
        }
    }
    file.clear();
    file.seekg(0);
}

/// Throws KeyWithoutValue for a key without a value.
std::unique_ptr<Sprite> readEither(std::istream &file) {
    line_number = 0;
    std::string first_line = getLine(file, false);
    const bool is_marked = first_line.starts_with(BYTE_ORDER_MARK);
    const std::size_t begin = is_marked ? BYTE_ORDER_MARK.size() : 0;
    first_line.erase(0, begin);
    file.seekg(static_cast<std::streamoff>(begin));
    if (first_line == "<HEADER>") {
        logLine(1, "RM::loadSprite(): assuming robust sprite file format.");
        return loadRobustSprite(file);
    }
    if (parseInt(first_line) >= 1) {
        logLine(1, "RM::loadSprite(): assuming simple sprite file format.");
        return loadSimpleSprite(file);
    }
    logFault(1, "RM::loadSprite(): Error! Unknown sprite file format.");
    logLine("RM::loadSprite(): First line is '%s'.", first_line.c_str());
    return nullptr;
}

} // namespace

std::ifstream openSprite(const std::string &path, const std::string &filename) {
    sprite_fault = {};
    std::ifstream file;
    // Some systems open a folder as if it were an empty file, and wait until somebody writes to a
    // pipe.
    if (!platform::isOtherThanFile(path))
        file.open(path, std::ios::binary);
    if (!file.is_open()) {
        logSearch(filename);
        logFault(1, "RM::loadSprite(): Error! Cannot open file '%s'.", filename.c_str());
    } else if (sizeOf(file) > MAX_SPRITE_BYTES) {
        logFault(1, "RM::loadSprite(): Error! File '%s' has more than %d bytes.", filename.c_str(),
                 MAX_SPRITE_BYTES);
        file.close();
    }
    return file;
}

std::unique_ptr<Sprite> readSprite(std::istream &file, const std::string &filename) {
    warnIfNotUtf8(file, filename);
    try {
        return readEither(file);
    } catch (const KeyWithoutValue &error) {
        logFailure("RM::loadSprite(): Error! File '%s', %s.", filename.c_str(), error.what());
        return nullptr;
    }
}

} // namespace sv
