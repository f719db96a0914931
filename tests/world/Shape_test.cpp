#include "world/Shape.h"

#include "core/LogManager.h"
#include "display/DisplayManager.h"
#include "support/WindowTest.h"
#include "world/WorldManager.h"

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

    /// What the library makes of a polygon.
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

TEST_F(ShapeTest, a_circle_is_a_polygon_of_three_to_ten_corners) {
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
}

TEST_F(ShapeTest, the_first_square_turns_every_figure_after_it) {
    startDisplay();
    const sf::Vector2f up_and_left = pixel - sf::Vector2f(12, 12);
    expectSame(frame(make(sv::TRIANGLE, 24)), frame(3, 12, 0, up_and_left));
    expectSame(frame(make(sv::SQUARE, 24)),
               frame(4, 12, 45, pixel + sf::Vector2f(12, -13.714286F)));
    expectSame(frame(make(sv::TRIANGLE, 24)), frame(3, 12, 45, up_and_left));
    expectSame(frame(make(sv::CIRCLE, 24)), frame(10, 24, 45, up_and_left));
}

TEST_F(ShapeTest, a_squares_size_is_divided_by_the_font_scale) {
    startDisplay("font_scale:0.5");
    expectSame(frame(make(sv::SQUARE, 10)), frame(4, 20, 45, pixel + sf::Vector2f(5, -10 / 1.75F)));
}

TEST_F(ShapeTest, one_of_undefined_type_repeats_the_figure_before_it_in_its_own_colour) {
    startDisplay();
    frame(make(sv::TRIANGLE, 30));
    Shape undefined = make(sv::UNDEFINED_SHAPE, 7);
    undefined.setColor(sv::CYAN);
    expectSame(frame(undefined), frame(3, 15, 0, pixel - sf::Vector2f(15, 15), sf::Color::Cyan));
}

TEST_F(ShapeTest, a_custom_colour_shows_the_last_components_it_was_given) {
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

TEST_F(ShapeTest, begins_as_a_white_circle_of_the_texts_height) {
    startDisplay();
    const Shape shape;
    EXPECT_EQ(shape.getType(), sv::CIRCLE);
    EXPECT_EQ(shape.getSize(), 24);
    expectSame(frame(shape), frame(10, 24, 0, pixel - sf::Vector2f(12, 12)));
}

TEST_F(ShapeTest, a_size_that_is_no_length_draws_without_harm) {
    startDisplay();
    constexpr float infinite = std::numeric_limits<float>::infinity();
    for (const float size :
         {0.0F, -5.0F, infinite, -infinite, std::numeric_limits<float>::quiet_NaN(), 1e30F}) {
        for (const int type : {sv::CIRCLE, sv::SQUARE, sv::TRIANGLE})
            make(type, size).draw(place);
    }
    EXPECT_EQ(sv::DisplayManager::getInstance().swapBuffers(), 0);
}

TEST_F(ShapeTest, an_unknown_type_is_refused_and_reported) {
    startLog();
    Shape shape;
    shape.setType(sv::SQUARE);
    shape.setType(3);
    shape.setType(-2);
    EXPECT_EQ(shape.getType(), sv::SQUARE);
    shape.setType(-1);
    EXPECT_EQ(shape.getType(), sv::UNDEFINED_SHAPE);
    EXPECT_EQ(logLines(),
              (std::vector<std::string>{"Shape::setType(): Unknown shape type 3. Ignoring.",
                                        "Shape::setType(): Unknown shape type -2. Ignoring."}));
}

TEST_F(ShapeTest, drawing_says_where_or_that_there_is_no_window) {
    startLog(20);
    Shape().draw(place);
    EXPECT_EQ(logCount("Shape::draw(): DisplayManager window not defined."), 1);
    startDisplay();
    Shape().draw(place);
    EXPECT_EQ(logCount("Shape::draw(): Drawing at (128.00, 320.00)"), 1);
}

} // namespace
