// Games that draw with a shader, and what the engine draws between.

#include "selvane/display/DisplayManager.h"
#include "support/WindowTest.h"

#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Graphics/Shader.hpp>
#include <SFML/Graphics/Sprite.hpp>
#include <SFML/Graphics/Texture.hpp>

struct Shaders : test::WindowTest {};

TEST_F(Shaders, those_of_games_and_ours_are_kept_apart) {
    startDisplay();
    sv::DisplayManager &display = sv::DisplayManager::getInstance();
    display.swapBuffers(); // Only now is nothing in it, and a background not drawn twice.
    sf::RenderWindow &window = *display.getFlushedWindow();
    window.draw(sf::RectangleShape()); // The first thing drawn lets go of every shader.
    sf::Shader black;
    ASSERT_TRUE(black.loadFromMemory("void main() { gl_FragColor = vec4(0.0, 0.0, 0.0, 1.0); }",
                                     sf::Shader::Fragment));
    sf::Shader::bind(&black);
    display.drawCh({40, 12}, 'x', sv::WHITE, sv::Rgb(sv::GREEN));
    display.getFlushedWindow();
    sf::Image red;
    red.create(4, 4, sf::Color::Red);
    sf::Texture texture;
    ASSERT_TRUE(texture.loadFromImage(red));
    window.draw(sf::Sprite(texture));
    EXPECT_NE(test::extentOf(sf::Color::Green, picture()), test::Extent());
    EXPECT_EQ(test::extentOf(sf::Color::Red, picture()), (test::Extent{0, 0, 3, 3}));
}
