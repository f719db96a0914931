#include "selvane/core/LogManager.h"
#include "selvane/network/NetworkManager.h"
#include "selvane/world/ViewObject.h"
#include "support/WorldTest.h"

namespace sv {
namespace {

class SerializationTest : public test::WorldTest {
  protected:
    Object *p_o = new Object;
};

TEST_F(SerializationTest, a_new_object_writes_everything_and_then_nothing) {
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
}

TEST_F(SerializationTest, the_selector_chooses_by_names_with_commas) {
    const struct {
        const char *selector;
        const char *text;
    } cases[] = {
        {"SPEED,POSITION,", "pos-x:1,pos-y:1,speed:0,"},
        {"POSITION", ""},
        {"POSITION,SPEED", "pos-x:1,pos-y:1,"},
        {"FOLLOW_PATH,", "follow_path:false,path:,path_index:0,"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(p_o->serialize(c.selector), c.text) << c.selector;
    expectLogged({"Object::serialize(): Warning! Attribute 'POSITION' missing trailing ','"});
    EXPECT_FALSE(p_o->isModified(Attribute::POSITION));
    EXPECT_TRUE(p_o->isModified(Attribute::ID)) << "what was not written stays modified";
}

TEST_F(SerializationTest, only_what_changed_travels) {
    p_o->serialize("ALL");
    p_o->setPosition({2.5F, 1});
    p_o->setVelocity({0, -2});
    EXPECT_EQ(p_o->serialize(""), "pos-x:2.5,pos-y:1,x_direction:0,y_direction:-1,speed:2,");
    Animation animation;
    animation.setIndex(3);
    p_o->setAnimation(animation, false);
    EXPECT_TRUE(p_o->isModified());
    EXPECT_EQ(p_o->serialize(""), "sprite_name:,sprite_index:3,sprite_slowdown_count:0,");
    EXPECT_FALSE(p_o->isModified());
}

TEST_F(SerializationTest, a_text_makes_the_round_trip_as_it_was_written) {
    const std::string text =
        "id:7,is_active:true,is_visible:true,event_count:3,event_name[0]:TIMER: tick,"
        "event_name[1]:sv-step,event_name[2]:sv-step,box-corner-x:-2,box-corner-y:-1,"
        "box-horizontal:4,box-vertical:2,pos-x:12.5,pos-y:-3.25,type:square red: the second,"
        "sprite_name:,sprite_index:2,sprite_slowdown_count:-1,altitude:4,solidness:2,no_soft:true,"
        "x_direction:0.6,y_direction:0.8,speed:1.5,x_acceleration:0.1,y_acceleration:1e-07,shape:1,"
        "size:12.5,color:3,opacity:128,follow_path:true,path:1 2|3.5 -4|1e+06 0,path_index:0,"
        "avoid_collisions:true,";
    EXPECT_EQ(p_o->deserialize(text), 0);
    EXPECT_EQ(p_o->serialize("ALL"), text);
    // The same over what an object already had.
    p_o->setPath({{{70, 1}}, 4});
    p_o->registerInterest("other");
    p_o->deserialize(text);
    EXPECT_EQ(p_o->serialize("DIRECTION,EVENTS,PATH,"),
              "event_count:3,event_name[0]:TIMER: tick,event_name[1]:sv-step,event_name[2]:sv-step,"
              "x_direction:0.6,y_direction:0.8,path:1 2|3.5 -4|1e+06 0,path_index:0,");
}

TEST_F(SerializationTest, what_is_read_changes_what_is_filed) {
    p_o->deserialize("altitude:0,type:Saucer,");
    EXPECT_EQ(world.getSceneGraph().visibleObjects(0).getCount(), 1);
    EXPECT_EQ(world.objectsOfType("Saucer").getCount(), 1);
    p_o->deserialize("is_active:TRUE,");
    EXPECT_EQ(world.getAllObjects(true).getCount(), 1);
    EXPECT_EQ(world.getAllObjects(false).getCount(), 0) << "only \"true\" is true";
    p_o->deserialize("box-corner-x:-0.5,box-corner-y:-1.9,box-horizontal:0.99,box-vertical:2.5,");
    EXPECT_EQ(p_o->getBox(), (Box{{0, -1}, 0, 2})) << "in whole cells";
}

TEST_F(SerializationTest, values_that_are_missing_or_no_sense_leave_theirs_alone) {
    const std::string before = p_o->serialize("ALL");
    // An empty text is nothing, and not the text before it once more.
    for (const char *text :
         {":::", "pos-x:5,", "", "pos-y:5,", "box-corner-x:3,", "pos-x:nan,pos-y:1,", "speed:inf,",
          "speed:3e38,x_direction:-1e10,y_acceleration:1.1e9,", "size:nan,", "shape:77,",
          "altitude:99,", "solidness:2147483648,", "id:,", "type:,", "event_count:-5,",
          "no_such_key:1,"}) {
        p_o->deserialize(text);
        EXPECT_EQ(p_o->serialize("ALL"), before) << "'" << text << "'";
    }
    EXPECT_EQ(logCount("Object::deserialize(): position not complete, so ignoring."), 2);
    EXPECT_EQ(logCount("Object::deserialize(): box not complete, so ignoring."), 1);
    expectLogged({"Object::deserialize(): pos-x is out of range (nan), so ignoring.",
                  "Object::deserialize(): speed is out of range (inf), so ignoring.",
                  "Object::deserialize(): x_direction is out of range (-1e+10), so ignoring.",
                  "Object::deserialize(): size is out of range (nan), so ignoring."});
    said();
    p_o->deserialize("pos-y:-1e99,");
    p_o->deserialize("pos-x:2e9,pos-y:3e9,");
    EXPECT_EQ(said(), "Object::deserialize(): pos-y is out of range (-inf), so ignoring.\n"
                      "Object::deserialize(): position not complete, so ignoring.\n"
                      "Object::deserialize(): pos-x is out of range (2e+09), so ignoring.\n"
                      "Object::deserialize(): pos-y is out of range (3e+09), so ignoring.\n");
}

TEST_F(SerializationTest, hostile_counts_and_names_register_no_more_than_fits) {
    std::string text = "event_count:1000000000,";
    for (int i = 0; i < 150; i += 2)
        text += "event_name[" + std::to_string(i) + "]:e,";
    p_o->deserialize(text);
    EXPECT_EQ(p_o->getInterests().size(), 50U) << "every second of the first hundred";
    p_o->deserialize("event_count:2147483647,event_name[-1]:x,event_name[0]:sv-collision,");
    EXPECT_TRUE(p_o->getInterests().empty());
}

TEST_F(SerializationTest, waypoints_of_no_sense_are_skipped_and_told) {
    std::string text = "path:1 2|34|nan 1|5 6|1 1e10|";
    for (int i = 0; i < 100; ++i)
        text += "7|";
    p_o->deserialize(text + ",");
    const std::vector<Vector> expected{{1, 2}, {5, 6}};
    EXPECT_EQ(p_o->getPath().waypoints, expected);
    p_o->deserialize("path: \t,");
    EXPECT_EQ(p_o->getPath().waypoints, expected) << "as empty as without the blanks";
    EXPECT_EQ(logCount("Object::deserialize(): malformed node 34."), 1);
    EXPECT_EQ(logCount("Object::deserialize(): malformed node nan 1."), 1);
    EXPECT_EQ(logCount("Object::deserialize(): malformed node 7."), 97);
    EXPECT_EQ(logCount("\tNot added."), 100);
    expectLogged({"Object::deserialize(): malformed nodes besides these: 3. Not added."});
}

TEST_F(SerializationTest, blanks_around_a_waypoints_numbers_do_not_count) {
    p_o->deserialize("path: 1 2|3  \t4 | 5 6|\n7 8| ,");
    EXPECT_EQ(p_o->getPath().waypoints, (std::vector<Vector>{{1, 2}, {3, 4}, {5, 6}, {7, 8}}));
    p_o->deserialize("path: 1|2 | |3 4,");
    EXPECT_EQ(p_o->getPath().waypoints, (std::vector<Vector>{{3, 4}}));
    EXPECT_EQ(logCount("\tNot added."), 3);
}

TEST_F(SerializationTest, no_text_forges_a_line_of_the_log) {
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

TEST_F(SerializationTest, the_log_tells_what_was_read) {
    LogManager::getInstance().setLogLevel(20);
    p_o->deserialize("id:7,is_active:yes,event_count:1,event_name[0]:a b,pos-x:1.234,size:12.5,");
    expectLogged({"Object::deserialize(): id is 7", "Object::deserialize(): is_active is yes",
                  "Object::deserialize(): event_name[0] is 'a b'",
                  "Object::deserialize(): pos-x is 1.23", "Object::deserialize(): size is '12.5'"});
}

TEST_F(SerializationTest, a_view_object_travels_with_its_label_and_place) {
    auto *p_view = new ViewObject;
    p_view->serialize("ALL");
    EXPECT_FALSE(p_view->isModified());
    p_view->setDrawValue(false);
    EXPECT_EQ(p_view->serialize(""), "") << "the switch alone does not count";
    p_view->setViewString("TIMER: left");
    p_view->setValue(-3);
    p_view->setBorder(false);
    p_view->setLocation(BOTTOM_LEFT);
    const std::string text = p_view->serialize("");
    EXPECT_EQ(text, "pos-x:13.3333,pos-y:23,view_string:TIMER: left,view_value:-3,"
                    "view_border:false,view_location:6,");
    p_view->setBox({{0, 0}, 0, 0}); // The box travels in whole cells.
    auto *p_copy = new ViewObject;
    p_copy->deserialize(p_view->serialize("ALL"));
    EXPECT_EQ(p_copy->serialize("ALL"), p_view->serialize("ALL"));
    p_copy->deserialize("view_location:9,view_value:99999999999,");
    EXPECT_EQ(p_copy->getLocation(), BOTTOM_LEFT);
    EXPECT_EQ(p_copy->serialize("VALUE,"), "view_value:2147483647,");
}

} // namespace
} // namespace sv
