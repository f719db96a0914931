#include "selvane/resources/Animation.h"

#include "selvane/core/LogManager.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/resources/Sprite.h"
#include "support/EngineTest.h"

#include <limits>

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

/// Draws go to a display that is not started and refuses every character: a draw answers -1 if it
/// had something to show, and 0 if all of it was transparent or nothing was there.
constexpr int shown = -1;
constexpr int nothing_shown = 0;

class Animations : public test::EngineTest {
  protected:
    Animations() { startLog(); }

    /// As many frames as the text has characters, of one cell each; '.' is transparent.
    static std::unique_ptr<sv::Sprite> makeSprite(const std::string &cells, int slowdown) {
        auto sprite = std::make_unique<sv::Sprite>(static_cast<int>(cells.size()));
        for (const char c : cells)
            sprite->addFrame(sv::Frame(1, 1, std::string(1, c)));
        sprite->setTransparency('.');
        sprite->setSlowdown(slowdown);
        sprite->setLabel(cells);
        return sprite;
    }

    /// One character for each draw: '#' where something was shown.
    static std::string draw(sv::Animation &animation, int times) {
        std::string seen;
        for (int i = 0; i < times; ++i)
            seen += animation.draw({}) == shown ? '#' : '.';
        return seen;
    }
};

class AnimationText : public Animations {
  protected:
    AnimationText() {
        auto &resources = sv::ResourceManager::getInstance();
        resources.startUp();
        writeFile("spr.txt", "3\n1\n1\n2\nred\na\nb\nc\n");
        resources.loadSprite("spr.txt", "square red");
        resources.loadSprite("spr.txt", "TIMER: x");
    }
};

} // namespace

TEST_F(Animations, each_frame_stays_for_as_many_draws_as_the_slowdown_says) {
    const struct {
        const char *frames;
        int slowdown;
        const char *seen;
    } cases[] = {
        {".#.", 2, "..##...."},     {"#..", 2, "##....##"},      {".#", 1, ".#.#.#.#"},
        {".#", 0, ".#.#.#.#"},      {"#", 3, "########"},        {"", 1, "........"},
        {".#", lowest, ".#.#.#.#"}, {"#.", highest, "########"},
    };
    for (const auto &c : cases) {
        const auto sprite = makeSprite(c.frames, c.slowdown);
        sv::Animation animation;
        animation.setSprite(sprite.get());
        EXPECT_EQ(draw(animation, 8), c.seen) << c.frames << " slowed by " << c.slowdown;
    }
}

TEST_F(Animations, a_new_sprite_begins_at_its_first_frame_and_keeps_the_count) {
    const auto old_sprite = makeSprite("....", 3);
    const auto new_sprite = makeSprite("#.", 3);
    sv::Animation animation;
    animation.setSprite(old_sprite.get());
    draw(animation, 11); // Two draws into the fourth frame.
    animation.setSprite(new_sprite.get());
    EXPECT_EQ(draw(animation, 4), "#...");
}

TEST_F(Animations, a_sprite_that_is_gone_leaves_its_name_alone) {
    auto sprite = makeSprite("###", 1);
    sv::Animation animation;
    animation.setSprite(sprite.get());
    animation.draw({});
    sv::Animation copy = animation;
    const std::string text = copy.serialize("ALL");
    sprite.reset();
    for (sv::Animation *p_each : {&animation, &copy}) {
        EXPECT_EQ(p_each->getSprite(), nullptr);
        EXPECT_EQ(draw(*p_each, 2), "..");
        EXPECT_EQ(p_each->serialize("ALL"), text);
        EXPECT_EQ(p_each->getBox(), sv::Animation().getBox());
    }
    sprite = makeSprite("#", 1);
    copy.setSprite(sprite.get());
    EXPECT_EQ(draw(copy, 1), "#");
}

TEST_F(Animations, no_index_and_no_count_leads_astray) {
    const struct {
        int index;
        int count;
        const char *seen; // With frame 0 shown and frame 1 not.
    } cases[] = {
        {highest, 0, ".#.#"}, {lowest, 0, "...."},  {-2, 0, "..#."},
        {2, 0, ".#.#"},       {0, highest, "#.#."}, {0, lowest, "####"},
    };
    const auto sprite = makeSprite("#.", 1);
    for (const auto &c : cases) {
        sv::Animation animation;
        animation.setSprite(sprite.get());
        animation.setIndex(c.index);
        animation.setSlowdownCount(c.count);
        EXPECT_EQ(draw(animation, 4), c.seen) << c.index << ", " << c.count;
    }
}

TEST_F(Animations, a_frame_is_drawn_no_further_than_its_text) {
    const std::string text(40, '.'); // Too long to live inside the string object.
    for (const int width : {highest, 41, 40, 7, 1, 0, -1, lowest})
        for (const int height : {highest, 7, 1, 0, -1, lowest})
            EXPECT_EQ(sv::Frame(width, height, text).draw({}, sv::RED, '.'), nothing_shown)
                << width << " x " << height;
    EXPECT_EQ(sv::Frame(2, 1, "..#").draw({}, sv::RED, '.'), nothing_shown);
    EXPECT_EQ(sv::Frame(2, 2, "..#").draw({}, sv::RED, '.'), shown);
}

TEST_F(Animations, a_sprite_holds_no_more_frames_than_it_has_room_for) {
    sv::Sprite sprite(1);
    EXPECT_EQ(sprite.addFrame(sv::Frame(1, 1, "a")), 0);
    EXPECT_EQ(sprite.addFrame(sv::Frame(1, 1, "b")), -1);
    EXPECT_EQ(sprite.getFrame(0).getString(), "a");
    for (const int index : {-1, 1, lowest, highest}) {
        EXPECT_EQ(sprite.getFrame(index).getString(), "") << index;
        EXPECT_EQ(sprite.draw(index, {}, 0), nothing_shown) << index;
    }
    for (const int count : {highest, -1, lowest}) {
        sv::Sprite none(count);
        EXPECT_EQ(none.addFrame(sv::Frame(1, 1, "a")), -1);
        EXPECT_EQ(logLines().back(), "Sprite::Sprite(): Error! Unable to allocate " +
                                         std::to_string(count) + " frames.");
    }
}

TEST_F(Animations, the_box_is_the_sprite_around_the_position_or_just_under_a_cell) {
    sv::Animation animation;
    EXPECT_EQ(animation.draw({}), nothing_shown);
    EXPECT_EQ(animation.getBox(), (sv::Box{{-0.5F, -0.5F}, 0.99F, 0.99F}));
    sv::Sprite sprite(1);
    sprite.setWidth(5);
    sprite.setHeight(2);
    animation.setSprite(&sprite);
    EXPECT_EQ(animation.getBox(), (sv::Box{{-2.5F, -1}, 5, 2}));
}

TEST_F(AnimationText, is_written_when_something_changed_and_when_asked_for) {
    sv::Animation animation;
    animation.setSprite(sv::ResourceManager::getInstance().getSprite("square red"));
    const std::string name = "sprite_name:square red,sprite_index:0,";
    const std::string text = name + "sprite_slowdown_count:0,";
    EXPECT_EQ(animation.serialize("POSITION,"), "");
    EXPECT_EQ(animation.serialize("ALL,"), "");
    EXPECT_EQ(animation.serialize(""), text);
    EXPECT_EQ(animation.serialize(""), "");
    EXPECT_EQ(animation.serialize("ALL"), text);
    EXPECT_EQ(animation.serialize("POSITION,ANIMATION,"), text);

    animation.setIndex(0);
    animation.setName("square red");
    EXPECT_EQ(animation.serialize(""), "") << "nothing differs";
    animation.draw({});
    EXPECT_EQ(animation.serialize(""), name + "sprite_slowdown_count:1,");
    animation.setSlowdownCount(sv::FROZEN);
    animation.serialize("");
    animation.draw({});
    EXPECT_EQ(animation.serialize(""), "") << "frozen";
    animation.setSprite(nullptr);
    EXPECT_EQ(animation.serialize(""), name + "sprite_slowdown_count:-1,");
}

TEST_F(AnimationText, comes_back_as_it_was_written_and_leaves_alone_what_it_does_not_name) {
    for (const std::string text :
         {"sprite_name:TIMER: x,sprite_index:0,sprite_slowdown_count:-1,",
          "sprite_name:square red,sprite_index:2147483647,sprite_slowdown_count:2147483647,",
          "sprite_name:square red,sprite_index:-2147483648,sprite_slowdown_count:-2147483648,"}) {
        sv::Animation animation;
        animation.serialize("");
        EXPECT_EQ(animation.deserialize(text), 0);
        EXPECT_EQ(animation.serialize(""), text);
        ASSERT_NE(animation.getSprite(), nullptr) << text;
        EXPECT_EQ(animation.getSprite()->getLabel(), animation.getName());
        animation.deserialize("");
        animation.deserialize("sprite_slowdown_count:,pos-x:5,");
        EXPECT_EQ(animation.serialize("ALL"), text);
        animation.draw({});
    }
}

TEST_F(AnimationText, says_what_it_reads_and_keeps_its_sprite_if_the_named_one_is_unknown) {
    sv::Animation animation;
    animation.deserialize("sprite_name:square red,");
    sv::LogManager::getInstance().setLogLevel(20);
    said();
    animation.deserialize("sprite_name:circle red,sprite_index:2,sprite_slowdown_count:1,");
    EXPECT_EQ(said(), "Animation::deserialize(): sprite_name is 'circle red'\n"
                      "RM::getSprite(): Looking for sprite 'circle red'.\n"
                      "RM::getSprite(): Warning! Sprite 'circle red' not found.\n"
                      "Animation::Match(): Sprite 'circle red' not found\n"
                      "Animation::deserialize(): sprite_index is 2\n"
                      "Animation::deserialize(): sprite_slowdown_count is 1\n");
    EXPECT_EQ(animation.serialize("ALL"),
              "sprite_name:square red,sprite_index:2,sprite_slowdown_count:1,");
}
