#include "display/sfmlColor.h"

#include "support/EngineTest.h"

#include <SFML/Graphics/Color.hpp>

namespace sv {

namespace {

class SfmlColor : public test::EngineTest {};

TEST_F(SfmlColor, has_the_components_of_the_engines_colour_and_is_white_where_there_are_none) {
    startLog(5);
    for (int number = -1; number <= CUSTOM + 1; ++number) {
        sf::Color expected = sf::Color::White;
        if (BLACK <= number && number <= WHITE)
            colorToRGB(Color(number), expected.r, expected.g, expected.b);
        EXPECT_EQ(colorToSFML(Color(number)).toInteger(), expected.toInteger()) << number;
    }
    EXPECT_EQ(logText(), "LogManager::startUp(): successfully started.\n"
                         "colorToSFML(): Color -1 not supported.\n"
                         "colorToSFML(): Color is CUSTOM.\n"
                         "colorToSFML(): Color 9 not supported.\n");
}

} // namespace

} // namespace sv
