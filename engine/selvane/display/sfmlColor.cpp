#include "selvane/display/sfmlColor.h"

#include "selvane/core/LogManager.h"

#include <SFML/Graphics/Color.hpp>

namespace sv {

sf::Color colorToSFML(Color c) {
    switch (c) {
    case BLACK:
        return sf::Color::Black;
    case RED:
        return sf::Color::Red;
    case GREEN:
        return sf::Color::Green;
    case YELLOW:
        return sf::Color::Yellow;
    case BLUE:
        return sf::Color::Blue;
    case MAGENTA:
        return sf::Color::Magenta;
    case CYAN:
        return sf::Color::Cyan;
    case WHITE:
        return sf::Color::White;
    case CUSTOM:
        logLine(5, "colorToSFML(): Color is CUSTOM.");
        return sf::Color::White;
    }
    logLine(5, "colorToSFML(): Color %d not supported.", int{c});
    return sf::Color::White;
}

} // namespace sv
