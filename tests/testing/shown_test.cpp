#include "selvane/selvane.h"
#include "selvane/testing/Session.h"

#include <gtest/gtest.h>

struct Rabbit : sv::Object {
    Rabbit() { registerInterest(sv::KEYBOARD_EVENT); }
    int draw() override { return sv::DisplayManager::getInstance().drawCh(getPosition(), 'R'); }
    int eventHandler(const sv::Event *p_event) override {
        const auto *p_key = sv::eventCast<sv::EventKeyboard>(p_event);
        if (!p_key || p_key->getKey() != sv::Keyboard::SPACE)
            return 0;
        return setPosition(getPosition() + sv::Vector{2, 1});
    }
};

TEST(Rabbit, hops_as_long_as_space_is_held) {
    sv::Session session;
    ASSERT_EQ(session.start(), 0);
    sv::spawn<Rabbit>(); // It stands at (1, 1).
    session.tapKey(sv::Keyboard::A);
    session.play(3);
    EXPECT_EQ(session.screen(), "\n R");
    session.pressKey(sv::Keyboard::SPACE); // One event for the press and one for each step.
    session.play(2);
    EXPECT_EQ(session.screen(), "\n\n\n\n       R");
}
