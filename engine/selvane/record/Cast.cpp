#include "selvane/record/Cast.h"

#include "selvane/core/Color.h"
#include "selvane/core/utf8.h"

#include <iomanip>
#include <string_view>

namespace sv {

namespace {

constexpr std::string_view home_and_clear = "\x1b[H\x1b[2J";
constexpr std::string_view hide_cursor = "\x1b[?25l";

/// Terminals number the colours in the same order. Any other colour is shown as white.
char colorDigit(char letter) {
    const std::size_t number = COLOR_LETTERS.find(letter);
    return static_cast<char>('0' + (number == std::string_view::npos ? 7 : number));
}

/// Both texts have their lines and columns at the same places; the screen is UTF-8.
std::string inColor(const std::string &screen, const std::string &colors) {
    std::string text;
    char color = ' ';
    std::size_t i = 0;
    for (const char32_t ch : fromUtf8(screen)) {
        const char letter = colors[i++];
        if (ch == U'\n') {
            text += "\r\n";
            continue;
        }
        if (ch != U' ' && letter != color) {
            color = letter;
            text += std::string("\x1b[1;3") + colorDigit(color) + 'm';
        }
        text += toUtf8({&ch, 1});
    }
    return text;
}

/// As a text in JSON.
std::string jsonText(std::string_view text) {
    std::string json = "\"";
    for (const char ch : text) {
        switch (ch) {
        case '"':
        case '\\':
            json += '\\';
            json += ch;
            break;
        case '\r':
            json += "\\r";
            break;
        case '\n':
            json += "\\n";
            break;
        case '\x1b':
            json += "\\u001b";
            break;
        default:
            json += ch;
        }
    }
    return json + '"';
}

} // namespace

Cast::Cast(const std::string &filename, int columns, int rows) : file(filename) {
    file << R"({"version": 2, "width": )" << columns << R"(, "height": )" << rows << "}\n";
    file << "[0, \"o\", " << jsonText(hide_cursor) << "]\n";
}

void Cast::add(int milliseconds, const std::string &screen, const std::string &colors) {
    const std::string text = std::string(home_and_clear) + inColor(screen, colors);
    if (text == shown)
        return;
    shown = text;
    file << '[' << milliseconds / 1000 << '.' << std::setw(3) << std::setfill('0')
         << milliseconds % 1000 << ", \"o\", " << jsonText(text) << "]" << std::endl;
}

} // namespace sv
