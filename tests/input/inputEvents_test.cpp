#include "input/EventKeyboard.h"
#include "input/EventMouse.h"

#include <gtest/gtest.h>

namespace {

TEST(InputEvents, say_that_nothing_happened_until_they_are_filled) {
    const sv::EventKeyboard key;
    EXPECT_EQ(key.getType(), "sv-keyboard");
    EXPECT_EQ(key.getKey(), -1);
    EXPECT_EQ(key.getKeyboardAction(), -1);
    const sv::EventMouse mouse;
    EXPECT_EQ(mouse.getType(), "sv-mouse");
    EXPECT_EQ(mouse.getMouseAction(), -1);
    EXPECT_EQ(mouse.getMouseButton(), -1);
    EXPECT_EQ(mouse.getMousePosition(), sv::Vector());
}

} // namespace
