#include "selvane/core/Color.h"

#include "selvane/core/LogManager.h"

#include <array>
#include <cctype>
#include <charconv>
#include <cstddef>
#include <cstdint>

namespace sv {

namespace {

struct NamedColor {
    std::string_view name;
    unsigned char r, g, b;
};

constexpr std::array<NamedColor, 8> colors{{{"black", 0, 0, 0},
                                            {"red", 255, 0, 0},
                                            {"green", 0, 255, 0},
                                            {"yellow", 255, 255, 0},
                                            {"blue", 0, 0, 255},
                                            {"magenta", 255, 0, 255},
                                            {"cyan", 0, 255, 255},
                                            {"white", 255, 255, 255}}};

const NamedColor *findColor(Color c) {
    const auto index = static_cast<std::size_t>(c);
    return index < colors.size() ? &colors[index] : nullptr;
}

constexpr std::size_t rgb_length = 7; // Of "#rrggbb".

} // namespace

Rgb::Rgb(Color c) {
    colorToRGB(c, r, g, b);
}

std::string toString(Rgb color) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "#";
    for (const unsigned component : {color.r, color.g, color.b})
        text.append({digits[component / 16], digits[component % 16]});
    return text;
}

std::optional<Rgb> rgbFromText(std::string_view text) {
    if (text.size() != rgb_length || text[0] != '#')
        return std::nullopt;
    std::uint32_t number = 0;
    const char *const end = text.data() + text.size();
    if (std::from_chars(text.data() + 1, end, number, 16).ptr != end)
        return std::nullopt;
    const auto component = [&](int shift) { return static_cast<unsigned char>(number >> shift); };
    return Rgb(component(16), component(8), component(0));
}

void colorToRGB(Color c, unsigned char &r, unsigned char &g, unsigned char &b) {
    if (const NamedColor *color = findColor(c)) {
        r = color->r;
        g = color->g;
        b = color->b;
    } else if (c != CUSTOM) {
        logLine(5, "colorToRGB(): Color %d not supported.", int{c});
    }
}

std::string colorToString(Color c) {
    const NamedColor *color = findColor(c);
    if (!color)
        return "Unknown color";
    std::string name(color->name);
    name[0] = static_cast<char>(std::toupper(name[0]));
    return name;
}

std::optional<Color> colorFromName(std::string_view name) {
    for (std::size_t i = 0; i < colors.size(); ++i)
        if (colors[i].name == name)
            return static_cast<Color>(i);
    return std::nullopt;
}

} // namespace sv
