#include "selvane/resources/Animation.h"

#include "selvane/core/Config.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/display/ScreenCapture.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/resources/Sprite.h"
#include "support/EngineTest.h"

#include <limits>

namespace {

using sv::Frame;
using sv::NO_TRANSPARENCY;

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

struct Animations : test::EngineTest {
    Animations() {
        startLog();
        sv::Config::getInstance().loadConfig("headless:true,");
        display.startUp();
        sv::captureScreen();
    }

    /// As many frames as the text has characters, of one cell each.
    static std::unique_ptr<sv::Sprite> makeSprite(const std::string &cells, int slowdown) {
        auto sprite = std::make_unique<sv::Sprite>(static_cast<int>(cells.size()));
        for (const char c : cells)
            sprite->addFrame(Frame(1, 1, std::string(1, c)));
        sprite->setSlowdown(slowdown);
        sprite->setLabel(cells);
        return sprite;
    }

    std::string shown() {
        display.swapBuffers();
        return sv::screenText();
    }

    /// What so many draws show, a character for each; '.' is nothing.
    std::string draw(sv::Animation &animation, int times) {
        std::string seen;
        for (int i = 0; i < times; ++i) {
            EXPECT_EQ(animation.draw({}), 0);
            const std::string text = shown();
            seen += text.empty() ? "." : text;
        }
        return seen;
    }

    sv::DisplayManager &display = sv::DisplayManager::getInstance();
};

} // namespace

TEST_F(Animations, frames_stand_around_their_position) {
    const struct {
        Frame frame;
        sv::Vector position;
        std::string over_marks; // What is seen over eight marks in row 1.
        char transparency = NO_TRANSPARENCY;
    } cases[] = {
        {{1, 1, "a"}, {3, 1}, "\n###a####"},
        {{3, 3, "abcdefghi"}, {3, 1}, "  abc\n##def###\n  ghi"},
        {{4, 2, "abcdefgh"}, {3, 1}, "\n##abcd##\n  efgh"}, // From (1.5, 0.5).
        {{4, 2, "abcdefgh"}, {2.9F, 0.9F}, " abcd\n#efgh###"},
        {{3, 1, " b "}, {3, 1}, "\n## b ###"},
        {{3, 1, " b "}, {3, 1}, "\n###b####", ' '},
        {{2, 2, "abc"}, {3.5F, 1.5F}, "\n###ab###\n   c"},
        {{2, 1, "abcdef"}, {3.5F, 1}, "\n###ab###"},
    };
    for (const auto &[frame, position, over_marks, transparency] : cases) {
        display.drawString({0, 1}, "########");
        EXPECT_EQ(frame.draw(position, sv::BLUE, transparency), 0);
        EXPECT_EQ(shown(), over_marks);
        EXPECT_NE(sv::screenColors().find('b'), std::string::npos);
    }
    display.shutDown();
    EXPECT_EQ(Frame(3, 1, "abc").draw({}, sv::BLUE, NO_TRANSPARENCY), -1);
    EXPECT_EQ(logText(), "DisplayManager not started!\n") << "and no second character is tried";
}

TEST_F(Animations, frames_draw_code_points_in_utf_8) {
    sv::Config::getInstance().loadConfig("utf8:true,");
    Frame wall(2, 2, "\u2554\u2550.\u2551");
    wall.setColors({sv::Rgb(sv::RED), std::nullopt, std::nullopt, sv::Rgb(1, 2, 3)});
    EXPECT_EQ(wall.draw({3.5F, 1.5F}, sv::BLUE, '.'), 0);
    EXPECT_EQ(shown(), "\n   \u2554\u2550\n    \u2551");
    EXPECT_EQ(sv::screenColors(), "\n   rb\n    *");
}

TEST_F(Animations, frames_end_where_their_text_ends) {
    const std::string text(40, '.'); // Too long to live inside the string object.
    for (const int width : {highest, 41, 40, 7, 1, 0, -1, lowest})
        for (const int height : {highest, 7, 1, 0, -1, lowest})
            EXPECT_EQ(Frame(width, height, text).draw({}, sv::RED, '.'), 0)
                << width << " x " << height;
    EXPECT_EQ(shown(), "");
}

TEST_F(Animations, frames_change_with_the_slowdown) {
    const struct {
        const char *frames;
        int slowdown;
        const char *seen;
        int index = 0;
        int count = 0;
    } cases[] = {
        {"abc", 2, "aabbccaabb"},
        {"ab", 1, "ababab"},
        {"ab", 0, "ababab"},
        {"", 1, "...."},
        {"ab", lowest, "ababab"},
        {"ab", highest, "aaaaaa"},
        {"ab", 1, "aaaa", 0, sv::FROZEN},
        // A text can set any index and count.
        {"ab", 1, ".abab", highest},
        {"ab", 1, "......", lowest},
        {"ab", 1, "..aba", -2},
        {"ab", 1, "abab", 0, highest},
        {"ab", 1, "aaaa", 0, lowest},
    };
    for (const auto &[frames, slowdown, seen, index, count] : cases) {
        const auto sprite = makeSprite(frames, slowdown);
        sv::Animation animation;
        animation.setSprite(sprite.get());
        animation.setIndex(index);
        animation.setSlowdownCount(count);
        EXPECT_EQ(draw(animation, static_cast<int>(std::string(seen).size())), seen)
            << frames << " slowed by " << slowdown << " from " << index << ", " << count;
    }
}

TEST_F(Animations, new_sprites_start_over_and_keep_the_count) {
    const auto old_sprite = makeSprite("abcd", 3);
    old_sprite->setWidth(5);
    old_sprite->setHeight(2);
    const auto new_sprite = makeSprite("x y", 3);
    new_sprite->setColor(sv::GREEN);
    new_sprite->setTransparency(' ');
    sv::Animation animation;
    animation.setSprite(old_sprite.get());
    EXPECT_EQ(draw(animation, 11), "aaabbbcccdd");
    EXPECT_EQ(animation.getBox(), (sv::Box{{-2.5F, -1}, 5, 2}));
    animation.setSprite(new_sprite.get());
    EXPECT_EQ(draw(animation, 1), "x");
    EXPECT_EQ(sv::screenColors(), "g");
    display.drawCh({}, '#'); // Under the transparent frame.
    EXPECT_EQ(draw(animation, 4), "#..y");
}

TEST_F(Animations, sprites_hold_a_limited_number_of_frames) {
    sv::Sprite sprite(1);
    EXPECT_EQ(sprite.addFrame(Frame(1, 1, "a")), 0);
    EXPECT_EQ(sprite.addFrame(Frame(1, 1, "b")), -1);
    EXPECT_EQ(sprite.getFrame(0).getString(), "a");
    for (const int index : {-1, 1, lowest, highest})
        EXPECT_EQ(sprite.getFrame(index).getString(), "") << index;
    EXPECT_EQ(sv::Sprite(sv::MAX_FRAMES).getMaxFrameCount(), sv::MAX_FRAMES);
    EXPECT_EQ(logText(), "");
    for (const int count : {sv::MAX_FRAMES + 1, -1, lowest}) {
        EXPECT_EQ(sv::Sprite(count).getMaxFrameCount(), 0);
        EXPECT_EQ(logLines().back(), "Sprite::Sprite(): Error! Unable to allocate " +
                                         std::to_string(count) + " frames.");
    }
}

TEST_F(Animations, changes_are_written_and_read) {
    auto &resources = sv::ResourceManager::getInstance();
    resources.startUp();
    writeFile("spr.txt", "3\n1\n1\n2\nred\na\nb\nc\n");
    resources.loadSprite("spr.txt", "square red");
    resources.loadSprite("spr.txt", "TIMER: x");
    said();
    sv::Animation animation;
    animation.setSprite(resources.getSprite("TIMER: x"));
    const std::string name = "sprite_name:TIMER: x,sprite_index:0,";
    EXPECT_EQ(animation.serialize("POSITION,"), "");
    EXPECT_EQ(animation.serialize(""), name + "sprite_slowdown_count:0,");
    EXPECT_EQ(animation.serialize("POSITION,ANIMATION,"), name + "sprite_slowdown_count:0,");
    animation.setIndex(0);
    animation.setName("TIMER: x");
    EXPECT_EQ(animation.serialize(""), "") << "nothing differs";
    animation.draw({});
    EXPECT_EQ(animation.serialize(""), name + "sprite_slowdown_count:1,");
    animation.setSlowdownCount(sv::FROZEN);
    animation.serialize("");
    animation.draw({});
    EXPECT_EQ(animation.serialize(""), "") << "frozen";
    animation.setSprite(nullptr);
    EXPECT_EQ(animation.serialize(""), name + "sprite_slowdown_count:-1,");
    for (const std::string label : {"square red", "TIMER: x"}) {
        const std::string text =
            "sprite_name:" + label + ",sprite_index:2147483647,sprite_slowdown_count:-2147483648,";
        EXPECT_EQ(animation.deserialize(text), 0);
        animation.deserialize("");
        animation.deserialize("sprite_slowdown_count:,pos-x:5,");
        EXPECT_EQ(animation.serialize("ALL"), text);
        EXPECT_EQ(animation.getSprite(), resources.getSprite(label));
    }
    animation.deserialize("sprite_name:circle red,sprite_index:2,");
    EXPECT_EQ(said(), "RM::getSprite(): Warning! Sprite 'circle red' not found.\n"
                      "Animation::Match(): Sprite 'circle red' not found\n");
    EXPECT_EQ(animation.serialize("ALL"),
              "sprite_name:TIMER: x,sprite_index:2,sprite_slowdown_count:-2147483648,");
}
