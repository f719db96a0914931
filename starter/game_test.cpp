#include "game.h"

#include "selvane/testing/Session.h"

#include <gtest/gtest.h>

namespace {

/// The column in which a text stands on the screen; -1 if it is not there.
int columnOf(const std::string &screen, const std::string &text) {
    const std::size_t found = screen.find(text);
    if (found == std::string::npos)
        return -1;
    const std::size_t line_end = screen.rfind('\n', found);
    return static_cast<int>(line_end == std::string::npos ? found : found - line_end - 1);
}

const std::string hero = "\\o/";

TEST(Game, the_hero_walks_while_a_key_is_held) {
    sv::Session session(playGame);
    session.play(2);
    const int start = columnOf(session.screen(), hero);
    session.pressKey(sv::Keyboard::RIGHTARROW);
    session.play(5);
    session.releaseKey(sv::Keyboard::RIGHTARROW);
    session.play(2); // Once for the press, and once in each step.
    EXPECT_EQ(columnOf(session.screen(), hero), start + 6) << session.screen();
}

TEST(Game, who_stands_below_a_star_scores) {
    sv::Session session(playGame);
    session.play(2);
    EXPECT_NE(columnOf(session.screen(), "Score 0"), -1) << session.screen();
    for (int step = 0; step < 1000 && columnOf(session.screen(), "Score 0") != -1; ++step) {
        const int distance = columnOf(session.screen(), "*") - columnOf(session.screen(), hero) - 1;
        if (distance != 0)
            session.tapKey(distance < 0 ? sv::Keyboard::LEFTARROW : sv::Keyboard::RIGHTARROW);
        session.play();
    }
    EXPECT_NE(columnOf(session.screen(), "Score 1"), -1) << session.screen();
}

TEST(Game, q_quits_with_no_error_logged) {
    sv::Session session(playGame);
    session.play(2);
    session.tapKey(sv::Keyboard::Q);
    session.play(2);
    EXPECT_TRUE(session.hasEnded());
    EXPECT_EQ(session.exitStatus(), 0);
    EXPECT_EQ(session.log().find("Error!"), std::string::npos) << session.log();
}

} // namespace
