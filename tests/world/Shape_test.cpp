#include "selvane/world/Shape.h"

#include "selvane/display/DisplayManager.h"
#include "selvane/world/WorldManager.h"
#include "support/WindowTest.h"

#include <SFML/Graphics/CircleShape.hpp>
#include <SFML/Graphics/RenderWindow.hpp>
#include <limits>

namespace {

using sv::Shape;

/// Where every figure is drawn: the world position (14, 12) in a view that begins at (4, 2).
constexpr sv::Vector place{14, 12};
const sf::Vector2f pixel(128, 320);

struct ShapeTest : test::WindowTest {
    void startDisplay() {
        WindowTest::startDisplay();
        sv::WorldManager::getInstance().setView({{4, 2}, 80, 24});
    }

    static Shape make(int type, float size) {
        Shape shape;
        shape.setType(type);
        shape.setSize(size);
        return shape;
    }

    /// Expects a shape to look like this polygon drawn by SFML, from that far off its place on.
    static void expectPolygon(Shape shape, std::size_t corners, float radius, float rotation,
                              sf::Vector2f offset, sf::Color color = sf::Color::White) {
        sv::DisplayManager &display = sv::DisplayManager::getInstance();
        display.swapBuffers();
        shape.draw(place);
        const sf::Image drawn = picture();
        display.swapBuffers();
        sf::CircleShape polygon(radius, corners);
        polygon.setRotation(rotation);
        polygon.setPosition(pixel + offset);
        polygon.setFillColor(color);
        display.getWindow()->draw(polygon);
        EXPECT_EQ(test::difference(drawn, picture()), 0);
    }
};

TEST_F(ShapeTest, circles_have_three_to_ten_corners) {
    startDisplay();
    const std::pair<float, std::size_t> cases[] = {{2.5F, 3}, {3.9F, 3}, {7.9F, 7}, {9.99F, 9},
                                                   {10, 10},  {40, 10},  {1e4F, 10}};
    for (const auto &[size, corners] : cases) {
        SCOPED_TRACE(size);
        expectPolygon(make(sv::CIRCLE, size), corners, size, 0, {-size / 2, -size / 2});
    }
    expectPolygon(Shape(), 10, 24, 0, {-12, -12});
}

TEST_F(ShapeTest, the_first_square_turns_later_figures) {
    startDisplay();
    expectPolygon(make(sv::TRIANGLE, 24), 3, 12, 0, {-12, -12});
    // As high as its size by the font scale, 2, and higher up by its size by 1.75.
    expectPolygon(make(sv::SQUARE, 24), 4, 12, 45, {12, -13.714286F});
    expectPolygon(make(sv::TRIANGLE, 24), 3, 12, 45, {-12, -12});
    expectPolygon(make(sv::CIRCLE, 24), 10, 24, 45, {-12, -12});
    // One of undefined type repeats the figure before it in its own colour.
    Shape undefined = make(sv::UNDEFINED_SHAPE, 7);
    undefined.setColor(sv::CYAN);
    expectPolygon(undefined, 10, 24, 45, {-12, -12}, sf::Color::Cyan);
    // An object without a figure does not.
    sv::DisplayManager::getInstance().swapBuffers();
    sv::Object().draw();
    EXPECT_EQ(test::extentOf(sf::Color::White, picture()), test::Extent());
}

TEST_F(ShapeTest, custom_colours_show_the_last_components) {
    startDisplay();
    Shape shape = make(sv::CIRCLE, 40);
    shape.setRGB(10, 20, 30);
    shape.setAlpha(100);
    const auto expect_color = [&](sv::Color color, sf::Color shown) {
        shape.setColor(color);
        expectPolygon(shape, 10, 40, 0, {-20, -20}, shown);
    };
    expect_color(sv::MAGENTA, sf::Color(255, 0, 255, 100)); // Draws a copy of the shape.
    expect_color(sv::CUSTOM, sf::Color(10, 20, 30, 100));
    // Drawing in a named colour replaces the components.
    shape.setColor(sv::BLUE);
    shape.draw(place);
    expect_color(sv::CUSTOM, sf::Color(0, 0, 255, 100));
    shape.setColor({7, 8, 9});
    expectPolygon(shape, 10, 40, 0, {-20, -20}, sf::Color(7, 8, 9, 100));
}

TEST_F(ShapeTest, invalid_sizes_are_drawn_without_harm) {
    startDisplay();
    constexpr float infinite = std::numeric_limits<float>::infinity();
    for (const float size :
         {0.0F, -5.0F, infinite, -infinite, std::numeric_limits<float>::quiet_NaN(), 1e30F}) {
        for (const int type : {sv::CIRCLE, sv::SQUARE, sv::TRIANGLE})
            make(type, size).draw(place);
    }
    EXPECT_EQ(sv::DisplayManager::getInstance().swapBuffers(), 0);
}

} // namespace
