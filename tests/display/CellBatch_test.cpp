// What reaches the window in one piece, against the same drawn character by character.

#include "selvane/core/Config.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/display/sfmlColor.h"
#include "selvane/world/Shape.h"
#include "selvane/world/WorldManager.h"
#include "support/WindowTest.h"
#include "support/environment.h"

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Graphics/Shader.hpp>
#include <SFML/Graphics/Text.hpp>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>

namespace {

using sv::DisplayManager;
using sv::Vector;

/// Draws one character of a scene.
using Draw = std::function<void(Vector, char, sv::Color)>;

const Draw by_engine = [](Vector pos, char ch, sv::Color color) {
    DisplayManager::getInstance().drawCh(pos, ch, color);
};

/// With `utf8:true,`: two of three characters have a background of their own.
std::optional<sv::Rgb> backgroundOf(char ch) {
    const int number = static_cast<unsigned char>(ch);
    if (number % 3 == 0)
        return std::nullopt;
    return sv::Rgb(static_cast<unsigned char>(number), 40, static_cast<unsigned char>(90 + number));
}

const Draw by_engine_with_backgrounds = [](Vector pos, char ch, sv::Color color) {
    DisplayManager::getInstance().drawCh(pos, ch, color, backgroundOf(ch));
};

/// Two calls for each character, with objects of its own.
class Plain {
  public:
    Plain(sf::Vector2f new_cell, unsigned character_size, sf::Color background)
        : cell(new_cell), rectangle(new_cell) {
        EXPECT_TRUE(font.loadFromFile(test::FONT));
        text.setFont(font);
        text.setStyle(sf::Text::Bold);
        text.setCharacterSize(character_size);
        rectangle.setFillColor(background);
    }

    void operator()(Vector pos, char ch, sv::Color color) {
        sf::RenderWindow &window = *DisplayManager::getInstance().getFlushedWindow();
        const Vector corner = sv::WorldManager::getInstance().getView().corner;
        const sf::Vector2f pixel((pos.x - corner.x) * cell.x, (pos.y - corner.y) * cell.y);
        place({pixel.x - cell.x / 10, pixel.y + cell.y / 5});
        if (has_backgrounds) {
            const sv::Rgb fill = backgroundOf(ch).value_or(sv::Rgb(sv::BLUE));
            rectangle.setFillColor({fill.r, fill.g, fill.b});
        }
        window.draw(rectangle);
        text.setString(ch);
        text.setPosition(pixel + shake);
        text.setFillColor(sv::colorToSFML(color));
        window.draw(text);
    }

    sf::Vector2f shake;
    bool has_backgrounds = false; // And edges on whole pixels.

  private:
    void place(sf::Vector2f corner) {
        const auto edge = [&](float x) {
            return has_backgrounds ? std::ceil(x - 0.5F - 1.0F / 128) : x;
        };
        rectangle.setPosition(edge(corner.x), edge(corner.y));
        rectangle.setSize(
            {edge(corner.x + cell.x) - edge(corner.x), edge(corner.y + cell.y) - edge(corner.y)});
    }

    sf::Vector2f cell;
    sf::Font font;
    sf::Text text;
    sf::RectangleShape rectangle;
};

/// Far more than a game shows: characters over figures over characters, none on a whole pixel.
void drawBusyScreen(const Draw &character) {
    sv::Shape shape;
    for (int i = 0; i < 1500; ++i) {
        const auto n = static_cast<float>(i);
        const int row = i / 80;
        const Vector pos{n * 0.737F - 60 * static_cast<float>(row), 0.3F + n / 71};
        character(pos, static_cast<char>('!' + i % 94), static_cast<sv::Color>(i % 8));
        if (i % 50 != 0)
            continue;
        shape.setType(i / 50 % 3);
        shape.setColor(static_cast<sv::Color>(1 + i / 50 % 7));
        shape.setAlpha(static_cast<unsigned char>(60 + i / 10));
        shape.setSize(20 + n / 20);
        shape.draw(pos - Vector{5, 1});
    }
}

void drawEveryByte(const Draw &character) {
    for (int byte = 0; byte < 256; ++byte) {
        const int row = 1 + byte / 64 * 2;
        character({static_cast<float>(byte % 64) + 1, static_cast<float>(row)},
                  static_cast<char>(byte), sv::CYAN);
    }
}

/// Ten rows of cells side by side, and ten that change rows with each cell.
void drawNeighbours(const Draw &character) {
    for (int i = 0; i < 800; ++i) {
        const int row = i / 40 + (i < 400 ? 0 : i % 2);
        character({static_cast<float>(i % 40), static_cast<float>(row)},
                  static_cast<char>('!' + i * 7 % 94), static_cast<sv::Color>(i % 8));
    }
}

/// More cells than are drawn in one piece.
void drawManyCells(const Draw &character) {
    for (int i = 0; i < 9000; ++i)
        character({static_cast<float>(i % 80), static_cast<float>(i / 80 % 23)},
                  static_cast<char>('A' + i % 26), static_cast<sv::Color>(1 + i % 7));
}

struct CellBatchTest : test::WindowTest {
    std::function<void()> clear = [] { DisplayManager::getInstance().swapBuffers(); };

    Draw engine = by_engine;

    sf::Image drawn(const Draw &draw, void (*scene)(const Draw &)) const {
        clear();
        scene(draw);
        return picture();
    }

    /// Draws the scene both ways.
    void expectAlike(Plain &plain, void (*scene)(const Draw &)) const {
        // The first square turns every figure after it: both pictures come after one.
        sv::Shape square;
        square.setType(sv::SQUARE);
        square.draw({});
        const sf::Image cold = drawn(engine, scene); // The font's texture may grow meanwhile.
        const sf::Image warm = drawn(engine, scene);
        EXPECT_EQ(test::difference(cold, warm), 0);
        EXPECT_LE(test::difference(warm, drawn(std::ref(plain), scene)), 1);
    }
};

TEST_F(CellBatchTest, busy_screens_look_as_drawn_by_characters) {
    startDisplay("window_background_color:blue");
    DisplayManager::getInstance().swapBuffers();
    EXPECT_EQ(test::extentOf(sf::Color::Blue, picture()), (test::Extent{0, 0, 1023, 767}));
    Plain plain({12.8F, 32}, 25, sf::Color::Blue);
    for (const Vector corner : {Vector{0, 0}, Vector{3.3F, -2.45F}}) {
        sv::WorldManager::getInstance().setView({corner, 80, 24});
        expectAlike(plain, drawBusyScreen);
    }
}

TEST_F(CellBatchTest, backgrounds_look_as_drawn_by_characters) {
    engine = by_engine_with_backgrounds;
    for (const int width : {1024, 1000}) { // The first cell is 13 pixels wide, or 12.
        startDisplay("utf8:true,window_background_color:blue,window_horizontal_pixels:" +
                     std::to_string(width));
        DisplayManager::getInstance().swapBuffers();
        Plain plain({static_cast<float>(width) / 80, 32}, 25, sf::Color::Blue);
        plain.has_backgrounds = true;
        for (const Vector corner : {Vector{0, 0}, Vector{3.3F, -2.45F}}) {
            sv::WorldManager::getInstance().setView({corner, 80, 24});
            expectAlike(plain, drawBusyScreen);
            expectAlike(plain, drawManyCells);
        }
        DisplayManager::getInstance().shutDown();
    }
}

TEST_F(CellBatchTest, screens_look_the_same_without_shaders) {
    test::setEnvironment("MESA_EXTENSION_OVERRIDE",
                         "-GL_ARB_fragment_shader -GL_ARB_shading_language_100");
    startDisplay();
    EXPECT_FALSE(sf::Shader::isAvailable());
    Plain plain({12.8F, 32}, 25, sf::Color::Black);
    testing::internal::CaptureStderr();
    expectAlike(plain, drawBusyScreen);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(CellBatchTest, all_bytes_look_as_sfml_draws_them) {
    startDisplay();
    Plain plain({12.8F, 32}, 25, sf::Color::Black);
    expectAlike(plain, drawEveryByte);
    expectAlike(plain, drawManyCells);
}

TEST_F(CellBatchTest, shakes_move_characters_without_their_rectangles) {
    startDisplay("window_background_color:red");
    DisplayManager &display = DisplayManager::getInstance();
    display.setShake(19, 4, 2); // The seed below makes it 14 to the right: into the next cell.
    clear = [&] {
        display.getFlushedWindow()->clear(sf::Color::Red);
    }; // A frame would end the shake.
    Plain plain({12.8F, 32}, 25, sf::Color::Red);
    for (int frame = 0; frame < 3; ++frame) {
        std::srand(1);
        display.swapBuffers();
        std::srand(1);
        plain.shake = {};
        if (frame < 2) {
            plain.shake.x = static_cast<float>(19 - std::rand() % 20 * 2 + 1);
            plain.shake.y = static_cast<float>(4 - std::rand() % 5 * 2 + 1);
        }
        SCOPED_TRACE(frame);
        expectAlike(plain, drawBusyScreen);
        expectAlike(plain, drawNeighbours);
    }
}

TEST_F(CellBatchTest, characters_and_cells_may_have_any_size) {
    const struct {
        int width, height, columns, rows;
        float font_scale;
        unsigned character_size;
    } cases[] = {
        {500, 310, 37, 11, 1.3F, 17},
        {1024, 768, 160, 24, 2, 12}, // Characters reach above their cells' rectangles,
        {1024, 768, 160, 24, 4, 25}, // and beyond the next cell's.
    };
    for (const auto &[width, height, columns, rows, font_scale, character_size] : cases) {
        SCOPED_TRACE(character_size);
        startDisplay("window_horizontal_pixels:" + std::to_string(width) +
                     ",window_vertical_pixels:" + std::to_string(height) +
                     ",window_horizontal_chars:" + std::to_string(columns) +
                     ",window_vertical_chars:" + std::to_string(rows) +
                     ",font_scale:" + std::to_string(font_scale));
        Plain plain({static_cast<float>(width) / static_cast<float>(columns),
                     static_cast<float>(height) / static_cast<float>(rows)},
                    character_size, sf::Color::Black);
        expectAlike(plain, drawBusyScreen);
        expectAlike(plain, drawNeighbours);
        DisplayManager::getInstance().shutDown();
    }
}

/// As in a full screen that is larger than the window was configured: slivers show there.
TEST_F(CellBatchTest, stretched_screens_look_as_drawn_by_characters) {
    startDisplay();
    DisplayManager::getInstance().getFlushedWindow()->setView(sf::View({0, 0, 90, 60}));
    Plain plain({12.8F, 32}, 25, sf::Color::Black);
    expectAlike(plain, drawBusyScreen);
}

TEST_F(CellBatchTest, font_textures_may_grow_during_a_frame) {
    startDisplay("font_scale:6");
    Plain plain({12.8F, 32}, 76, sf::Color::Black);
    expectAlike(plain, drawEveryByte);
}

/// A picture that a game draws by itself in the whole window, with the window of an earlier frame.
TEST_F(CellBatchTest, rectangles_cover_what_games_draw) {
    startDisplay("window_background_color:red");
    sf::RenderWindow &window = *DisplayManager::getInstance().getWindow();
    clear = [&] {
        DisplayManager::getInstance().swapBuffers();
        window.clear(sf::Color::Yellow);
    };
    Plain plain({12.8F, 32}, 25, sf::Color::Red);
    expectAlike(plain, drawEveryByte);
}

} // namespace
