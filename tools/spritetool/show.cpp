#include "selvane/core/utf8.h"
#include "selvane/platform/process.h"
#include "selvane/resources/Sprite.h"
#include "spritetool/commands.h"
#include "spritetool/spriteText.h"
#include "spritetool/terminal.h"

#include <algorithm>
#include <iostream>
#include <string_view>

namespace spritetool {

namespace {

constexpr int most_steps = 1000; // That a frame is shown.
constexpr int step_ms = 33;      // Of a game that sets no other frame time.

constexpr char hide_cursor[] = "\x1b[?25l";
constexpr char show_cursor[] = "\x1b[?25h";
constexpr char usual_color[] = "\x1b[0m";

/// On black, as in the engine's window.
std::string colorCode(sv::Rgb color) {
    return "\x1b[38;2;" + std::to_string(color.r) + ";" + std::to_string(color.g) + ";" +
           std::to_string(color.b) + ";40m";
}

/// What a terminal may be given: nothing that moves its cursor.
std::string_view shown(std::string_view cell) {
    const auto byte = static_cast<unsigned char>(cell.front());
    const bool is_letter =
        cell.size() == 1 ? ' ' <= byte && byte < 0x7F : cell < "\xC2\x80" || cell > "\xC2\x9F";
    return is_letter ? cell : "?";
}

std::string frameText(const sv::Sprite &sprite, int index) {
    const sv::Frame frame = sprite.getFrame(index);
    const char transparent = sprite.getTransparency();
    std::string text;
    int cell = 0;
    for (const std::string &row : rowsOf(frame)) {
        std::optional<sv::Rgb> before;
        for (std::string_view rest = row; !rest.empty(); ++cell) {
            const std::string_view ch = sv::takeCells(rest, 1);
            const sv::Rgb color = colorOf(frame, cell).value_or(sprite.getRgb());
            text += before == color ? "" : colorCode(color);
            before = color;
            text += ch == std::string_view(&transparent, 1) ? " " : shown(ch);
        }
        text += usual_color + std::string("\n");
    }
    return text;
}

std::string shownRow(std::string_view row) {
    std::string text;
    while (!row.empty())
        text += shown(sv::takeCells(row, 1));
    return text;
}

/// Each frame is written over the one before.
void play(const sv::Sprite &sprite, bool is_once) {
    const KeyMode keys;
    const std::string back = "\x1b[" + std::to_string(sprite.getHeight()) + "A";
    const int frame_ms = std::clamp(sprite.getSlowdown(), 1, most_steps) * step_ms;
    sv::platform::catchStopSignals();
    std::cout << hide_cursor;
    for (int i = 0; sv::platform::stopSignal() == 0; ++i) {
        if (i > 0)
            std::cout << back;
        std::cout << frameText(sprite, i % sprite.getFrameCount()) << std::flush;
        const bool is_last = is_once && i + 1 == sprite.getFrameCount();
        if (keys.waitForKey(frame_ms) || is_last)
            break;
    }
    std::cout << show_cursor << std::flush;
}

} // namespace

int show(const std::string &file, bool is_once) {
    const auto sprite = read(file);
    if (!sprite)
        return 1;
    if (isTerminal()) {
        play(*sprite, is_once);
        return 0;
    }
    for (int i = 0; i < sprite->getFrameCount(); ++i) {
        std::cout << (i > 0 ? "\n" : "");
        for (const std::string &row : rowsOf(sprite->getFrame(i)))
            std::cout << shownRow(row) << "\n";
    }
    return 0;
}

} // namespace spritetool
