#include "display/DisplayManager.h"
#include "resources/Animation.h"
#include "resources/Sprite.h"
#include "support/WindowTest.h"

#include <functional>

namespace {

using sv::Vector;

class SpriteDrawing : public test::WindowTest {
  protected:
    void SetUp() override {
        startLog();
        startDisplay();
    }

    static void drawCh(Vector position, char c, sv::Color color) {
        sv::DisplayManager::getInstance().drawCh(position, c, color);
    }

    /// The characters of a text, one cell after the other to the right.
    static void drawRow(Vector position, const std::string &row, sv::Color color) {
        for (const char c : row) {
            drawCh(position, c, color);
            position.x += 1;
        }
    }

    /// A row of red marks under everything, and what is drawn over it.
    static sf::Image pictureOf(const std::function<void()> &draw) {
        sv::DisplayManager::getInstance().swapBuffers();
        drawRow({0, 5}, std::string(20, '#'), sv::RED);
        draw();
        return picture();
    }

    static void expectSame(const char *what, const std::function<void()> &a,
                           const std::function<void()> &b) {
        const sf::Image picture_a = pictureOf(a);
        EXPECT_EQ(test::difference(picture_a, pictureOf(b)).pixels, 0) << what;
        EXPECT_GT(test::difference(picture_a, pictureOf([] {})).pixels, 0)
            << what << ": nothing seen";
    }
};

} // namespace

TEST_F(SpriteDrawing, a_frame_stands_around_its_position) {
    const struct {
        const char *what;
        sv::Frame frame;
        char transparency;
        std::function<void()> cells;
    } cases[] = {
        {"one cell", sv::Frame(1, 1, "a"), 0,
         [] {
             drawRow({10, 5}, "a", sv::BLUE);
         }},
        {"odd size", sv::Frame(3, 3, "abcdefghi"), 0,
         [] {
             drawRow({9, 4}, "abc", sv::BLUE);
             drawRow({9, 5}, "def", sv::BLUE);
             drawRow({9, 6}, "ghi", sv::BLUE);
         }},
        {"even size", sv::Frame(4, 2, "abcdefgh"), 0,
         [] {
             drawRow({8.5F, 4.5F}, "abcd", sv::BLUE);
             drawRow({8.5F, 5.5F}, "efgh", sv::BLUE);
         }},
        {"blanks drawn", sv::Frame(3, 1, " b "), 0,
         [] {
             drawRow({9, 5}, " b ", sv::BLUE);
         }},
        {"blanks left out", sv::Frame(3, 1, " b "), ' ',
         [] {
             drawRow({10, 5}, "b", sv::BLUE);
         }},
        {"text too short", sv::Frame(2, 2, "abc"), 0,
         [] {
             drawRow({9.5F, 4.5F}, "ab", sv::BLUE);
             drawRow({9.5F, 5.5F}, "c", sv::BLUE);
         }},
        {"text too long", sv::Frame(2, 1, "abcdef"), 0,
         [] {
             drawRow({9.5F, 5}, "ab", sv::BLUE);
         }},
    };
    for (const auto &c : cases)
        expectSame(
            c.what,
            [&c] {
                EXPECT_EQ(c.frame.draw({10, 5}, sv::BLUE, c.transparency), 0);
            },
            c.cells);
}

TEST_F(SpriteDrawing, an_animation_shows_its_sprites_frames_in_its_color) {
    sv::Sprite sprite(3);
    for (const char *rows : {"a a", "b b", "c c"})
        sprite.addFrame(sv::Frame(3, 1, rows));
    sprite.setSlowdown(2);
    sprite.setColor(sv::GREEN);
    sprite.setTransparency(' ');
    sv::Animation animation;
    animation.setSprite(&sprite);

    const std::string seen = "aabbccaabbb";
    for (std::size_t i = 0; i < seen.size(); ++i) {
        if (i == 9)
            animation.setSlowdownCount(sv::FROZEN);
        expectSame(
            seen.substr(i).c_str(),
            [&] {
                EXPECT_EQ(animation.draw({10, 5}), 0);
            },
            [&] {
                drawCh({9, 5}, seen[i], sv::GREEN);
                drawCh({11, 5}, seen[i], sv::GREEN);
            });
    }
}
