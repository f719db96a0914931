#include "spritetool/spriteText.h"

#include "selvane/core/utf8.h"

#include <sstream>
#include <string_view>

namespace spritetool {

namespace {

constexpr const char *color_names[] = {"black", "red",     "green", "yellow",
                                       "blue",  "magenta", "cyan",  "white"};

std::string nameOf(const sv::Sprite &sprite) {
    return sprite.getColor() == sv::CUSTOM ? sv::toString(sprite.getRgb())
                                           : color_names[sprite.getColor()];
}

std::string bodyOf(const sv::Sprite &sprite, const std::string &frame_end) {
    std::string body;
    for (int i = 0; i < sprite.getFrameCount(); ++i) {
        for (const std::string &row : rowsOf(sprite.getFrame(i)))
            body += row + "\n";
        body += frame_end;
    }
    return body;
}

std::string simpleText(const sv::Sprite &sprite) {
    std::ostringstream text;
    text << sprite.getFrameCount() << "\n"
         << sprite.getWidth() << "\n"
         << sprite.getHeight() << "\n"
         << sprite.getSlowdown() << "\n"
         << nameOf(sprite) << "\n"
         << bodyOf(sprite, "");
    return text.str();
}

std::string robustText(const sv::Sprite &sprite) {
    std::ostringstream text;
    text << "<HEADER>\nframes " << sprite.getFrameCount() << "\nwidth " << sprite.getWidth()
         << "\nheight " << sprite.getHeight() << "\ncolor " << nameOf(sprite);
    if (sprite.getTransparency() != sv::NO_TRANSPARENCY)
        text << "\ntransparency " << sprite.getTransparency();
    text << "\nslowdown " << sprite.getSlowdown() << "\n</HEADER>\n<BODY>\n"
         << bodyOf(sprite, "end\n") << "</BODY>\n<FOOTER>\nversion 1\n</FOOTER>\n";
    return text.str();
}

} // namespace

std::vector<std::string> rowsOf(const sv::Frame &frame) {
    std::vector<std::string> rows;
    const auto width = static_cast<std::size_t>(frame.getWidth());
    std::string_view rest = frame.getString();
    while (!rest.empty())
        rows.emplace_back(sv::takeCells(rest, width));
    return rows;
}

std::optional<sv::Rgb> colorOf(const sv::Frame &frame, int cell) {
    const auto index = static_cast<std::size_t>(cell);
    return index < frame.getColors().size() ? frame.getColors()[index] : std::nullopt;
}

bool hasCellColors(const sv::Sprite &sprite) {
    for (int i = 0; i < sprite.getFrameCount(); ++i)
        if (!sprite.getFrame(i).getColors().empty())
            return true;
    return false;
}

std::string textOf(const sv::Sprite &sprite, Format format) {
    return format == Format::SIMPLE ? simpleText(sprite) : robustText(sprite);
}

} // namespace spritetool
