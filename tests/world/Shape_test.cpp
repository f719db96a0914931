#include "selvane/world/Shape.h"

#include "selvane/core/LogManager.h"
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

class ShapeTest : public test::WindowTest {
  protected:
    void startDisplay(const std::string &settings = "") {
        WindowTest::startDisplay(settings);
        sv::WorldManager::getInstance().setView({{4, 2}, 80, 24});
    }

    static Shape make(int type, float size) {
        Shape shape;
        shape.setType(type);
        shape.setSize(size);
        return shape;
    }

    static sf::Image frame(Shape shape) {
        sv::DisplayManager::getInstance().swapBuffers();
        shape.draw(place);
        return picture();
    }

    /// The same polygon drawn by SFML.
    static sf::Image frame(std::size_t corners, float radius, float rotation, sf::Vector2f position,
                           sf::Color color = sf::Color::White) {
        sv::DisplayManager::getInstance().swapBuffers();
        sf::CircleShape polygon(radius, corners);
        polygon.setRotation(rotation);
        polygon.setPosition(position);
        polygon.setFillColor(color);
        sv::DisplayManager::getInstance().getWindow()->draw(polygon);
        return picture();
    }

    static void expectSame(const sf::Image &a, const sf::Image &b) {
        EXPECT_EQ(test::difference(a, b).pixels, 0);
        const sf::Color background = a.getPixel(0, 0);
        EXPECT_NE(test::extentOf(background, a), test::Extent()) << "nothing to compare";
    }
};

TEST_F(ShapeTest, circles_have_three_to_ten_corners) {
    startDisplay();
    struct {
        float size;
        std::size_t corners;
    } const cases[] = {{2.5F, 3}, {3.9F, 3}, {7.9F, 7}, {9.99F, 9}, {10, 10}, {40, 10}, {1e4F, 10}};
    for (const auto &[size, corners] : cases) {
        SCOPED_TRACE(size);
        expectSame(frame(make(sv::CIRCLE, size)),
                   frame(corners, size, 0, pixel - sf::Vector2f(size / 2, size / 2)));
    }
    expectSame(frame(Shape()), frame(10, 24, 0, pixel - sf::Vector2f(12, 12)));
}

TEST_F(ShapeTest, the_first_square_turns_later_figures) {
    startDisplay();
    const sf::Vector2f up_and_left = pixel - sf::Vector2f(12, 12);
    expectSame(frame(make(sv::TRIANGLE, 24)), frame(3, 12, 0, up_and_left));
    expectSame(frame(make(sv::SQUARE, 24)),
               frame(4, 12, 45, pixel + sf::Vector2f(12, -13.714286F)));
    expectSame(frame(make(sv::TRIANGLE, 24)), frame(3, 12, 45, up_and_left));
    expectSame(frame(make(sv::CIRCLE, 24)), frame(10, 24, 45, up_and_left));
    // One of undefined type repeats the figure before it in its own colour.
    Shape undefined = make(sv::UNDEFINED_SHAPE, 7);
    undefined.setColor(sv::CYAN);
    expectSame(frame(undefined), frame(10, 24, 45, up_and_left, sf::Color::Cyan));
    // An object without a figure does not.
    sv::DisplayManager::getInstance().swapBuffers();
    sv::Object().draw();
    EXPECT_EQ(test::extentOf(sf::Color::White, picture()), test::Extent());
}

TEST_F(ShapeTest, squares_are_divided_by_the_font_scale) {
    startDisplay("font_scale:0.5");
    expectSame(frame(make(sv::SQUARE, 10)), frame(4, 20, 45, pixel + sf::Vector2f(5, -10 / 1.75F)));
}

TEST_F(ShapeTest, custom_colours_show_the_last_components) {
    startDisplay();
    const sf::Vector2f position = pixel - sf::Vector2f(20, 20);
    Shape shape = make(sv::CIRCLE, 40);
    shape.setRGB(10, 20, 30);
    shape.setColor(sv::MAGENTA);
    shape.setAlpha(100);
    expectSame(frame(shape), frame(10, 40, 0, position, sf::Color(255, 0, 255, 100)));
    shape.setColor(sv::CUSTOM);
    expectSame(frame(shape), frame(10, 40, 0, position, sf::Color(10, 20, 30, 100)));
    // Drawing in a named colour replaces the components.
    shape.setColor(sv::BLUE);
    shape.draw(place);
    shape.setColor(sv::CUSTOM);
    expectSame(frame(shape), frame(10, 40, 0, position, sf::Color(0, 0, 255, 100)));
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

TEST_F(ShapeTest, refusals_and_drawing_are_logged) {
    startLog(20);
    Shape shape;
    for (const int type : {3, -2})
        shape.setType(type);
    EXPECT_EQ(shape.getType(), sv::CIRCLE);
    shape.draw(place);
    EXPECT_EQ(logText(), "Shape::setType(): Unknown shape type 3. Ignoring.\n"
                         "Shape::setType(): Unknown shape type -2. Ignoring.\n"
                         "Shape::draw(): DisplayManager window not defined.\n");
    startDisplay();
    shape.draw(place);
    expectLogged({"Shape::draw(): Drawing at (128.00, 320.00)"});
}

} // namespace
