#include "display/sfmlColor.h"

#include "support/EngineTest.h"

#include <SFML/Graphics/Color.hpp>

namespace sv {

namespace {

class SfmlColor : public test::EngineTest {};

TEST_F(SfmlColor, has_the_components_of_the_engines_colour) {
    for (int number = BLACK; number <= WHITE; ++number) {
        sf::Color expected;
        colorToRGB(Color(number), expected.r, expected.g, expected.b);
        EXPECT_EQ(colorToSFML(Color(number)).toInteger(), expected.toInteger()) << number;
    }
}

TEST_F(SfmlColor, what_has_none_is_white_and_reported) {
    startLog(5);
    for (const int number : {8, 9, -1})
        EXPECT_EQ(colorToSFML(Color(number)), sf::Color::White) << number;
    EXPECT_EQ(logCount("colorToSFML(): Color is CUSTOM."), 1);
    EXPECT_EQ(logCount("colorToSFML(): Color 9 not supported."), 1);
    EXPECT_EQ(logCount("colorToSFML(): Color -1 not supported."), 1);
}

} // namespace

} // namespace sv
