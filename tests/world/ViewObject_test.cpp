#include "selvane/world/ViewObject.h"

#include "selvane/core/Config.h"
#include "selvane/core/EventView.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/display/ScreenCapture.h"
#include "selvane/resources/Sprite.h"
#include "selvane/world/spawn.h"
#include "support/WorldTest.h"

#include <algorithm>
#include <limits>

namespace sv {
namespace {

struct ViewObjectTest : test::WorldTest {
    ViewObjectTest() {
        // The middles of the sixths of 78 columns are columns too.
        Config::getInstance().loadConfig("headless:true,window_horizontal_chars:78,");
        captureScreen();
        EXPECT_EQ(DisplayManager::getInstance().startUp(), 0);
        world.setView({{0, 0}, 78, 24});
    }
    ~ViewObjectTest() override { DisplayManager::getInstance().shutDown(); }

    static ViewObject *make(const std::string &label, int value = 0) {
        auto *p_label = spawn<ViewObject>();
        p_label->setViewString(label);
        p_label->setValue(value);
        return p_label;
    }

    std::string shown() {
        world.draw();
        DisplayManager::getInstance().swapBuffers();
        return screenText();
    }
};

TEST_F(ViewObjectTest, labels_show_in_nine_places) {
    std::vector<ViewObject *> labels;
    for (int location = TOP_LEFT; location <= BOTTOM_RIGHT; ++location) {
        labels.push_back(make("P" + std::to_string(location), location * 11));
        labels.back()->setLocation(location);
    }
    const std::string top =
        "          ------                    -------                   -------\n";
    const std::string edge =
        "          -------                   -------                   -------";
    const std::string gap(8, '\n');
    EXPECT_EQ(shown(),
              top + "         | P0 0 |                  | P1 11 |                 | P2 22 |\n" +
                  top + gap + edge +
                  "\n         | P3 33 |                 | P4 44 |                 | P5 55 |\n" +
                  edge + gap + edge +
                  "\n         | P6 66 |                 | P7 77 |                 | P8 88 |\n" +
                  edge);
    for (ViewObject *p_label : labels)
        p_label->setBorder(false);
    labels[0]->setPosition({3, 4});
    labels[0]->setBorder(true);
    labels[0]->setDrawValue(false);
    labels[0]->setColor(CYAN);
    world.setView({{50, 60}, 78, 24}); // Labels stay where they are while the world scrolls.
    EXPECT_EQ(shown(), "                                     P1 11                     P2 22\n\n\n"
                       " ----\n"
                       "| P0 |\n"
                       " ----\n\n\n\n\n\n"
                       "           P3 33                     P4 44                     P5 55" +
                           std::string(12, '\n') +
                           "           P6 66                     P7 77                     P8 88");
    EXPECT_NE(screenColors().find("c cc c\n"), std::string::npos) << screenColors();
    EXPECT_EQ(logText().find("out of range"), std::string::npos) << "a free label has no location";
}

TEST_F(ViewObjectTest, borders_fit_labels_in_utf_8) {
    Config::getInstance().loadConfig("utf8:true,");
    make("M\u00FCller", 3)->setColor({9, 9, 9});
    EXPECT_EQ(shown(), std::string(34, ' ') + "----------\n" + std::string(33, ' ') +
                           "| M\u00FCller 3 |\n" + std::string(34, ' ') + "----------");
    EXPECT_EQ(std::ranges::count(screenColors(), '*'), 10 + 2 + 7 + 10);
}

TEST_F(ViewObjectTest, sprites_show_at_the_edges_of_the_view) {
    Sprite sprite(1);
    sprite.setWidth(1);
    sprite.setHeight(3);
    sprite.addFrame(Frame(1, 3, "abc"));
    Animation pictures;
    pictures.setSprite(&sprite);
    for (const int location : {TOP_LEFT, CENTER_CENTER, BOTTOM_RIGHT}) {
        ViewObject *picture = make("hidden");
        picture->setAnimation(pictures, true);
        picture->setLocation(location);
        picture->setDrawSprite(true);
    }
    const std::string picture = shown();
    const std::string left(13, ' ');
    const std::string right = std::string(65, ' ');
    EXPECT_TRUE(picture.starts_with(left + "a\n" + left + "b\n" + left + "c\n")) << picture;
    EXPECT_NE(picture.find("\n" + left + left + left + "b\n"), std::string::npos) << picture;
    EXPECT_TRUE(picture.ends_with(right + "a\n" + right + "b\n" + right + "c")) << picture;
    EXPECT_EQ(std::ranges::count(picture, '\n'), 23);
}

TEST_F(ViewObjectTest, events_change_values_by_tag) {
    ViewObject *p_points = make("Points");
    ViewObject *p_lives = make("Lives", 3);
    constexpr int most = std::numeric_limits<int>::max();
    const std::pair<EventView, int> cases[] = {
        {{"Points", 20, true}, 20}, {{"Points", -5, true}, 15},  {{"Points", 7, false}, 7},
        {{"points", 99, false}, 7}, {{"Points ", 99, false}, 7}, {{"Points", most, true}, most}};
    for (const auto &[event, points] : cases) {
        EXPECT_EQ(world.onEvent(&event), 2);
        EXPECT_EQ(p_points->getValue(), points);
        EXPECT_EQ(p_lives->getValue(), 3);
    }
    Event impostor;
    impostor.setType(VIEW_EVENT);
    EXPECT_EQ(p_points->eventHandler(&impostor), 0);
}

TEST_F(ViewObjectTest, attributes_have_numbers_in_each_class) {
    ViewObject *p_label = make("");
    const Object *p_o = p_label;
    p_label->serialize("ALL");
    p_label->setAcceleration({1, 1});
    EXPECT_TRUE(p_label->isModified()) << "as an object";
    p_label->setColor(RED);
    for (int index = -1; index <= ATTRIBUTE_COUNT; ++index) {
        EXPECT_EQ(p_label->isModified(index), index == 3) << index;
        EXPECT_EQ(p_o->isModified(index), index == 13) << index;
    }
}

TEST_F(ViewObjectTest, unknown_locations_are_refused) {
    ViewObject *p_label = make("");
    for (const int location : {9, -1}) {
        p_label->setLocation(location);
        expectLogged({"ViewObject::setLocation(): Warning! Location out of range (" +
                      std::to_string(location) + "). Ignored."});
    }
    p_label->setPosition({39, 1});
    EXPECT_EQ(p_label->getLocation(), TOP_CENTER) << "where it is: it keeps its location";
    p_label->setPosition({5, 22});
    EXPECT_EQ(p_label->getLocation(), FREE_PLACEMENT);
}

TEST_F(ViewObjectTest, attributes_make_the_round_trip) {
    ViewObject *p_label = make("");
    EXPECT_EQ(p_label->serialize("ALTITUDE,SOLIDNESS,"), "altitude:4,solidness:2,");
    p_label->serialize("ALL");
    EXPECT_FALSE(p_label->isModified());
    p_label->setDrawValue(false);
    EXPECT_EQ(p_label->serialize(""), "") << "the switch alone does not count";
    const std::string text = "view_string:TIMER: left,view_value:-3,view_border:false,view_color:6,"
                             "view_location:6,";
    p_label->deserialize(text);
    EXPECT_EQ(p_label->serialize(""), "pos-x:13,pos-y:23," + text);
    const std::pair<const char *, const char *> changes[] = {
        {"view_string:,view_value:,", ""},
        {"view_string:TIMER: left,", "view_string:TIMER: left,"}, // A label is always sent on.
        {"view_value:-3,view_border:false,view_color:6,view_location:9,", ""},
    };
    for (const auto &[change, written] : changes) {
        p_label->deserialize(change);
        EXPECT_EQ(p_label->serialize(""), written);
    }
    const std::string colors = "view_color:8,view_rgb:#010203,view_background:#ff0010,";
    p_label->deserialize(colors);
    EXPECT_EQ(p_label->getRgb(), Rgb(1, 2, 3));
    EXPECT_EQ(p_label->serialize(""), colors);
    p_label->deserialize(colors + "view_rgb:#999999,view_background:none,");
    EXPECT_EQ(p_label->serialize(""), "") << "the first of two counts";
    p_label->deserialize("view_color:6,");
    EXPECT_EQ(p_label->serialize(""), "view_color:6,");
    p_label->deserialize("view_draw_value:true,view_value:99999999999,");
    EXPECT_EQ(p_label->serialize("LOCATION,VALUE,DRAW_VALUE,"),
              "view_value:2147483647,view_location:6,view_draw_value:true,");
}

} // namespace
} // namespace sv
