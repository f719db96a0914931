#include "selvane/core/Color.h"

#include "selvane/core/LogManager.h"

#include <array>

namespace sv {

namespace {

struct NamedColor {
    const char *name;
    unsigned char r, g, b;
};

constexpr std::array<NamedColor, 8> colors{{{"Black", 0, 0, 0},
                                            {"Red", 255, 0, 0},
                                            {"Green", 0, 255, 0},
                                            {"Yellow", 255, 255, 0},
                                            {"Blue", 0, 0, 255},
                                            {"Magenta", 255, 0, 255},
                                            {"Cyan", 0, 255, 255},
                                            {"White", 255, 255, 255}}};

const NamedColor *findColor(Color c) {
    const auto index = static_cast<std::size_t>(c);
    return index < colors.size() ? &colors[index] : nullptr;
}

} // namespace

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
    return color ? color->name : "Unknown color";
}

} // namespace sv
