#include "selvane/display/sfmlColor.h"

#include "selvane/core/LogManager.h"

#include <SFML/Graphics/Color.hpp>

namespace sv {

sf::Color colorToSFML(Color c) {
    if (c < BLACK || c > WHITE) {
        if (c == CUSTOM)
            logLine(5, "colorToSFML(): Color is CUSTOM.");
        else
            logLine(5, "colorToSFML(): Color %d not supported.", int{c});
        return sf::Color::White;
    }
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;
    colorToRGB(c, r, g, b);
    return {r, g, b};
}

} // namespace sv
