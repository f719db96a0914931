#include "spritetool/spriteText.h"

#include "selvane/core/Color.h"

#include <sstream>

namespace spritetool {

namespace {

constexpr const char *color_names[] = {"black", "red",     "green", "yellow",
                                       "blue",  "magenta", "cyan",  "white"};

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
         << color_names[sprite.getColor()] << "\n"
         << bodyOf(sprite, "");
    return text.str();
}

std::string robustText(const sv::Sprite &sprite) {
    std::ostringstream text;
    text << "<HEADER>\nframes " << sprite.getFrameCount() << "\nwidth " << sprite.getWidth()
         << "\nheight " << sprite.getHeight() << "\ncolor " << color_names[sprite.getColor()];
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
    for (std::size_t begin = 0; begin < frame.getString().size(); begin += width)
        rows.push_back(frame.getString().substr(begin, width));
    return rows;
}

std::string textOf(const sv::Sprite &sprite, Format format) {
    return format == Format::SIMPLE ? simpleText(sprite) : robustText(sprite);
}

} // namespace spritetool
