#include "spritetool/commands.h"

#include "selvane/core/text.h"
#include "selvane/resources/readSprite.h"
#include "selvane/resources/spriteFile.h"
#include "spritetool/spriteText.h"

#include <cstdint>
#include <fstream>
#include <iostream>
#include <sstream>

namespace spritetool {

namespace {

constexpr char unwritten = '.'; // The transparent character of a new sprite.
constexpr int new_slowdown = 5;

int fail(const std::string &what) {
    std::cerr << "selvane-sprite: " << what << "\n";
    return 1;
}

bool isRobust(const std::string &file) {
    std::string first;
    std::getline(std::ifstream(file), first);
    return first.find("<HEADER>") != std::string::npos;
}

/// Whether the engine reads the text as that sprite, but for what the simple format has no place
/// for.
bool readsAs(const std::string &text, const sv::Sprite &sprite, Format format) {
    std::istringstream file(text);
    const auto found = sv::readSprite(file, "");
    if (!found || found->getFrameCount() != sprite.getFrameCount() ||
        found->getSlowdown() != sprite.getSlowdown() || found->getRgb() != sprite.getRgb() ||
        (format == Format::ROBUST && found->getTransparency() != sprite.getTransparency()))
        return false;
    for (int i = 0; i < sprite.getFrameCount(); ++i)
        if (found->getFrame(i).getString() != sprite.getFrame(i).getString())
            return false;
    return true;
}

int write(const std::string &text, const std::string &to) {
    if (to.empty()) {
        std::cout << text << std::flush;
        return std::cout ? 0 : fail("Standard output takes no more");
    }
    std::ofstream file(to, std::ios::binary);
    return file << text << std::flush ? 0 : fail("'" + to + "' cannot be written");
}

} // namespace

std::unique_ptr<sv::Sprite> read(const std::string &file) {
    std::ifstream opened = sv::openSprite(file, file);
    auto sprite = opened.is_open() ? sv::readSprite(opened, file) : nullptr;
    if (!sprite)
        std::cerr << file << ":" << sv::sprite_fault.line << ": " << sv::sprite_fault.reason
                  << "\n";
    return sprite;
}

int check(const std::vector<std::string> &files) {
    int status = 0;
    for (const std::string &file : files)
        if (!read(file))
            status = 1;
    return status;
}

int convert(const std::string &file, const std::string &to) {
    const auto sprite = read(file);
    if (!sprite)
        return 1;
    const Format format = isRobust(file) ? Format::SIMPLE : Format::ROBUST;
    const std::string text = textOf(*sprite, format);
    if (!readsAs(text, *sprite, format))
        return fail(file + ": the other format cannot hold this sprite");
    if (format == Format::SIMPLE && sprite->getTransparency() != sv::NO_TRANSPARENCY)
        std::cerr << file << ": warning: the simple format has no transparency, and '"
                  << sprite->getTransparency() << "' will be drawn\n";
    if (format == Format::SIMPLE && hasCellColors(*sprite))
        std::cerr << file << ": warning: the simple format has no colors of cells\n";
    return write(text, to);
}

int makeNew(const std::string &width, const std::string &height, const std::string &frames) {
    const int sizes[] = {sv::parseInt(width), sv::parseInt(height), sv::parseInt(frames)};
    std::int64_t characters = 1;
    for (const int size : sizes) {
        if (size < 1 || characters * size > sv::MAX_SPRITE_BYTES / 2)
            return fail("no sprite is " + width + " wide and " + height + " high and has " +
                        frames + " frames");
        characters *= size;
    }
    sv::Sprite sprite(sizes[2]);
    sprite.setWidth(sizes[0]);
    sprite.setHeight(sizes[1]);
    sprite.setTransparency(unwritten);
    sprite.setSlowdown(new_slowdown);
    const auto cells = static_cast<std::size_t>(sizes[0]) * static_cast<std::size_t>(sizes[1]);
    for (int i = 0; i < sizes[2]; ++i)
        sprite.addFrame({sizes[0], sizes[1], std::string(cells, unwritten)});
    const std::string text = textOf(sprite, Format::ROBUST);
    return readsAs(text, sprite, Format::ROBUST) ? write(text, "") : fail("too large");
}

} // namespace spritetool
