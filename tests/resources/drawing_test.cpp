#include "selvane/display/DisplayManager.h"
#include "selvane/resources/Animation.h"
#include "selvane/resources/Sprite.h"
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

    /// A row of red marks under everything, and what is drawn over it.
    static sf::Image pictureOf(const std::function<void()> &draw) {
        sv::DisplayManager::getInstance().swapBuffers();
        sv::DisplayManager::getInstance().drawString({0, 5}, std::string(20, '#'),
                                                     sv::LEFT_JUSTIFIED, sv::RED);
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
        Vector corner; // Of what is to be seen.
        std::vector<std::string> rows;
    } cases[] = {
        {"one cell", {1, 1, "a"}, 0, {10, 5}, {"a"}},
        {"odd size", {3, 3, "abcdefghi"}, 0, {9, 4}, {"abc", "def", "ghi"}},
        {"even size", {4, 2, "abcdefgh"}, 0, {8.5F, 4.5F}, {"abcd", "efgh"}},
        {"blanks drawn", {3, 1, " b "}, 0, {9, 5}, {" b "}},
        {"blanks left out", {3, 1, " b "}, ' ', {10, 5}, {"b"}},
        {"text too short", {2, 2, "abc"}, 0, {9.5F, 4.5F}, {"ab", "c"}},
        {"text too long", {2, 1, "abcdef"}, 0, {9.5F, 5}, {"ab"}},
    };
    for (const auto &c : cases) {
        const auto draw_frame = [&] {
            EXPECT_EQ(c.frame.draw({10, 5}, sv::BLUE, c.transparency), 0);
        };
        expectSame(c.what, draw_frame, [&] {
            Vector row = c.corner;
            for (const std::string &text : c.rows) {
                sv::DisplayManager::getInstance().drawString(row, text, sv::LEFT_JUSTIFIED,
                                                             sv::BLUE);
                row.y += 1;
            }
        });
    }
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
        const auto draw_animation = [&] { EXPECT_EQ(animation.draw({10, 5}), 0); };
        expectSame(seen.substr(i).c_str(), draw_animation, [&] {
            for (const float x : {9.0F, 11.0F})
                sv::DisplayManager::getInstance().drawCh({x, 5}, seen[i], sv::GREEN);
        });
    }
}
