#include "selvane/core/LogManager.h"
#include "selvane/network/NetworkManager.h"
#include "selvane/world/ViewObject.h"
#include "support/WorldTest.h"

#include <regex>

namespace sv {
namespace {

struct SerializationTest : test::WorldTest {
    Object *p_o = new Object;
};

TEST_F(SerializationTest, new_objects_write_everything_once) {
    const std::string text =
        "id:1,is_active:true,is_visible:true,event_count:0,box-corner-x:-0.5,box-corner-y:-0.5,"
        "box-horizontal:0.99,box-vertical:0.99,pos-x:1,pos-y:1,type:(Undefined),sprite_name:,"
        "sprite_index:0,sprite_slowdown_count:0,altitude:2,solidness:0,no_soft:false,x_direction:0,"
        "y_direction:0,speed:0,x_acceleration:0,y_acceleration:0,shape:-1,size:24,color:7,opacity:"
        "255,"
        "follow_path:false,path:,path_index:0,avoid_collisions:false,";
    EXPECT_EQ(p_o->serialize(""), text);
    EXPECT_EQ(p_o->serialize(""), "");
    EXPECT_EQ(p_o->serialize("ALL"), text);
    EXPECT_EQ(logText().find("missing trailing"), std::string::npos);
}

TEST_F(SerializationTest, selectors_name_attributes_with_commas) {
    const std::pair<const char *, const char *> cases[] = {
        {"SPEED,POSITION,", "pos-x:1,pos-y:1,speed:0,"},
        {"POSITION", ""},
        {"POSITION,SPEED", "pos-x:1,pos-y:1,"},
        {"FOLLOW_PATH,", "follow_path:false,path:,path_index:0,"},
        {"PATH,", "path:,path_index:0,"},
        {"ALL,", ""},
    };
    for (const auto &[selector, text] : cases)
        EXPECT_EQ(p_o->serialize(selector), text) << selector;
    expectLogged({"Object::serialize(): Warning! Attribute 'POSITION' missing trailing ','"});
    EXPECT_FALSE(p_o->isModified(Attribute::POSITION));
    EXPECT_TRUE(p_o->isModified(Attribute::ID)) << "what was not written stays modified";
}

TEST_F(SerializationTest, only_changes_are_written) {
    p_o->registerInterest("other");
    p_o->serialize("ALL");
    const char *const only_if_different[] = {
        "id:2,",
        "event_count:0,",
        "pos-x:2.5,pos-y:1,",
        "altitude:4,",
        "solidness:2,",
        "is_visible:false,",
        "is_active:false,",
        "box-corner-x:0,box-corner-y:0,box-horizontal:2,box-vertical:1,"};
    for (const char *text : only_if_different) {
        p_o->deserialize(text);
        EXPECT_EQ(p_o->serialize(""), text);
        p_o->deserialize(text);
        EXPECT_EQ(p_o->serialize(""), "") << text;
    }
    const char *const always[] = {"type:T,",
                                  "no_soft:true,",
                                  "avoid_collisions:true,",
                                  "x_direction:0,y_direction:-1,",
                                  "speed:2,",
                                  "x_acceleration:3,y_acceleration:0,",
                                  "follow_path:true,",
                                  "path:1 2,path_index:0,",
                                  "shape:1,size:24,color:7,opacity:255,"};
    for (const char *text : always)
        for (int i = 0; i < 2; ++i) {
            p_o->deserialize(text);
            EXPECT_EQ(p_o->serialize(""), text);
        }
    Animation animation;
    animation.setIndex(3);
    p_o->setAnimation(animation, false);
    EXPECT_EQ(p_o->serialize(""), "sprite_name:,sprite_index:3,sprite_slowdown_count:0,");
    EXPECT_FALSE(p_o->isModified());
}

TEST_F(SerializationTest, texts_make_the_round_trip) {
    const std::string text =
        "id:7,is_active:true,is_visible:true,event_count:3,event_name[0]:TIMER: tick,"
        "event_name[1]:sv-step,event_name[2]:sv-step,box-corner-x:-2,box-corner-y:-1,"
        "box-horizontal:4,box-vertical:2,pos-x:0.333333,pos-y:-3.25,type:square red: the second,"
        "sprite_name:,sprite_index:2,sprite_slowdown_count:-1,altitude:4,solidness:2,no_soft:true,"
        "x_direction:0.6,y_direction:0.8,speed:1.5,x_acceleration:0.1,y_acceleration:1e-07,shape:1,"
        "size:12.5,color:3,opacity:128,follow_path:true,path:100000 2|3.5 -4|1e+06 0,path_index:0,"
        "avoid_collisions:false,";
    p_o->setPath({{{70, 1}}, 4}); // What it had is replaced.
    p_o->registerInterest("other");
    EXPECT_EQ(p_o->deserialize(text), 0);
    EXPECT_EQ(p_o->serialize("ALL"), text);
    const std::pair<const char *, const char *> changes[] = {
        {"y_direction:-0.5,", "x_direction:0.6,y_direction:-0.5,"},
        {"x_acceleration:3,", "x_acceleration:3,y_acceleration:1e-07,"},
        {"opacity:256,", "shape:1,size:12.5,color:3,opacity:255,"},
        {"opacity:-1,", "shape:1,size:12.5,color:3,opacity:0,"},
        {"color:8,rgb:#0AF102,", "shape:1,size:12.5,color:8,opacity:0,rgb:#0af102,"},
        {"color:8,rgb:red,", "shape:1,size:12.5,color:8,opacity:0,"},
        {"is_active:TRUE,", "is_active:false,"}, // Only "true" is true.
        {"box-corner-x:-0.5,box-corner-y:-1.9,box-horizontal:0.99,box-vertical:2.5,",
         "box-corner-x:0,box-corner-y:-1,box-horizontal:0,box-vertical:2,"}, // In whole cells.
    };
    for (const auto &[change, written] : changes) {
        p_o->deserialize(change);
        EXPECT_EQ(p_o->serialize(""), written);
    }
}

TEST_F(SerializationTest, invalid_values_change_nothing) {
    const std::string before = p_o->serialize("ALL");
    const std::string incomplete = "> position not complete, so ignoring.\n";
    // An empty text must not read the text before it again.
    const std::pair<const char *, std::string> cases[] = {
        {":::", ""},
        {"pos-x:5,", incomplete},
        {"", ""},
        {"pos-y:-1e99,", "> pos-y is out of range (-inf), so ignoring.\n" + incomplete},
        {"pos-x:nan,pos-y:1,", "> pos-x is out of range (nan), so ignoring.\n"},
        {"pos-x:2e9,pos-y:3e9,", "> pos-x is out of range (2e+09), so ignoring.\n"
                                 "> pos-y is out of range (3e+09), so ignoring.\n"},
        {"box-corner-x:3,", "> box not complete, so ignoring.\n"},
        {"speed:3e38,", "> speed is out of range (3e+38), so ignoring.\n"},
        {"x_direction:-1e10,", "> x_direction is out of range (-1e+10), so ignoring.\n"},
        {"y_acceleration:1.1e9,", "> y_acceleration is out of range (1.1e+09), so ignoring.\n"},
        {"size:nan,", "> size is out of range (nan), so ignoring.\n"},
        {"shape:,altitude:,id:,type:,event_count:-5,no_such_key:1,", ""},
    };
    const std::regex prefix("Object::deserialize\\(\\):");
    for (const auto &[text, logged] : cases) {
        said();
        p_o->deserialize(text);
        EXPECT_EQ(std::regex_replace(said(), prefix, ">"), logged) << text;
        EXPECT_EQ(p_o->serialize("ALL"), before) << text;
    }
    for (const char *text : {"shape:3,altitude:5,solidness:2147483648,", "shape:-2,altitude:-1,"})
        p_o->deserialize(text); // The setters refuse those.
    expectLogged({"Shape::setType(): Unknown shape type 3. Ignoring.",
                  "Shape::setType(): Unknown shape type -2. Ignoring."});
    EXPECT_EQ(p_o->serialize("ALL"), before);
}

TEST_F(SerializationTest, hostile_counts_register_at_most_a_hundred) {
    std::string text = "event_count:1000000000,";
    for (int i = 0; i < 150; i += 2)
        text += "event_name[" + std::to_string(i) + "]:e,";
    p_o->deserialize(text);
    EXPECT_EQ(p_o->getInterests().size(), 50U) << "every second of the first hundred";
    p_o->deserialize("event_count:2147483647,event_name[-1]:x,event_name[0]:sv-collision,");
    EXPECT_TRUE(p_o->getInterests().empty());
}

TEST_F(SerializationTest, malformed_waypoints_are_skipped) {
    std::string text = "path: 1 2|34|nan 1|3  \t4 |\n5 6|1 1e10|";
    for (int i = 0; i < 100; ++i)
        text += "7|";
    p_o->deserialize(text + " ,");
    const std::vector<Vector> expected{{1, 2}, {3, 4}, {5, 6}};
    EXPECT_EQ(p_o->getPath().waypoints, expected) << "blanks around numbers do not count";
    p_o->deserialize("path: \t,");
    EXPECT_EQ(p_o->getPath().waypoints, expected) << "as empty as without the blanks";
    expectLogged({"Object::deserialize(): malformed node 34.",
                  "Object::deserialize(): malformed node nan 1.",
                  "Object::deserialize(): malformed nodes besides these: 3. Not added."});
    EXPECT_EQ(logCount("Object::deserialize(): malformed node 7."), 97);
    EXPECT_EQ(logCount("\tNot added."), 100);
}

TEST_F(SerializationTest, texts_forge_no_log_lines) {
    LogManager::getInstance().setLogLevel(28);
    const std::string forged = "\xC3\xA4\nforged\x1b[2J\r\t\x7f";
    std::string text = "event_count:1,event_name[0]:" + forged + "," + forged + ":" + forged + ",";
    for (const char *key : {"is_active", "type", "sprite_name", "size", "path", "view_string",
                            "view_border", "view_draw_value"})
        text += key + (":" + forged) + ",";
    auto *p_view = new ViewObject;
    p_view->deserialize(text);
    p_view->setType("inactive, and so not filed by its type"); // Names the old one.
    p_view->unregisterInterest("no " + forged);
    NetworkManager::getInstance().registerInterest(p_view, forged);
    for (const std::string &line : logLines()) {
        EXPECT_FALSE(line.starts_with("forged")) << line;
        EXPECT_EQ(line.find_first_of("\x1b\r\x7f"), std::string::npos) << line;
        EXPECT_TRUE(line.rfind('\t') == std::string::npos || line.rfind('\t') == 0) << line;
    }
    expectLogged({"Object::deserialize(): type is \xC3\xA4?forged?[2J???"});
}

} // namespace
} // namespace sv
