#include "game.h"

#include "selvane/testing/Session.h"

#include <gtest/gtest.h>

/// Whether a text is on the screen.
bool shows(const sv::Session &session, const std::string &text) {
    return session.screen().find(text) != std::string::npos;
}

TEST(Garden, a_drop_that_hits_scores) {
    sv::Session session(playGame);
    session.play(2);
    EXPECT_TRUE(shows(session, "Score 0")) << session.screen();
    for (int step = 0; step < 300 && shows(session, "Score 0"); ++step) {
        session.tapKey(sv::Keyboard::SPACE);
        session.play();
    }
    EXPECT_FALSE(shows(session, "Score 0")) << session.screen();
}

TEST(Garden, an_idle_gardener_loses_and_plays_again) {
    sv::Session session(playGame);
    session.play(1000);
    EXPECT_TRUE(shows(session, "Game over.")) << session.screen();
    session.tapKey(sv::Keyboard::R);
    session.play(2);
    EXPECT_TRUE(shows(session, "Score 0")) << session.screen();
    session.end();
    EXPECT_EQ(session.exitStatus(), 0);
}
