#include "selvane/splash/Splash.h"

#include "selvane/loop/GameManager.h"
#include "selvane/splash/SplashSelvane.h"
#include "selvane/testing/Session.h"
#include "selvane/world/spawn.h"
#include "support/EngineTest.h"
#include "support/printing.h"

namespace sv {
namespace {

using SplashTest = test::EngineTest;

/// A program that is only a title sequence; returns how many objects that leaves.
int showSplash() {
    GameManager &game = GameManager::getInstance();
    EXPECT_EQ(game.startUp(), 0);
    EXPECT_EQ(splash(), 0);
    const int left = WorldManager::getInstance().getAllObjects(true).getCount();
    game.shutDown();
    return left;
}

TEST_F(SplashTest, needs_a_started_game) {
    startLog(10);
    EXPECT_EQ(splash(), -1);
    expectLogged({"splash(): Error! Cannot run splash screen until game manger is started."});
    EXPECT_TRUE(WorldManager::getInstance().getAllObjects(true).isEmpty());
}

TEST_F(SplashTest, sequence_keeps_its_timeline) {
    Session session(showSplash);
    std::string seen; // The spread wings, none, and the creature on the ground.
    session.start();
    for (int step = 0; step < 90; ++step, session.play()) {
        SCOPED_TRACE(step);
        const std::string screen = session.screen();
        const auto has = [&](const char *part) { return screen.find(part) != std::string::npos; };
        if (step >= 54 && step < 64)
            seen += has("####(O)####") ? '#' : has("_-(O)-_") ? '-' : '.';
        if (step >= 10 && step <= 88) {
            EXPECT_EQ(has("__/ /___ /__"), step < 15) << "slanted";
            EXPECT_EQ(has("|___| |___|"), step >= 15) << "upright";
            EXPECT_EQ(session.colors().find('b') != std::string::npos, step > 22 && step < 60);
        }
        if (step < 14) {
            EXPECT_TRUE(session.objects<SplashSelvane>().empty());
            EXPECT_NEAR(session.objects<Splash>().at(0)->getPosition().x,
                        103.5F - static_cast<float>(step) * 74.5F / 16, 1e-3F);
            continue;
        }
        const Vector banner{103.5F - 14 * 74.5F / 16, 12};
        const Vector creature = session.objects<SplashSelvane>().at(0)->getPosition();
        EXPECT_NEAR(session.objects<Splash>().at(0)->getPosition().x, banner.x, 1e-3F);
        EXPECT_NEAR(creature.x, banner.x + (step < 59 ? 24 : 23), 1e-3F);
        EXPECT_NEAR(creature.y, std::max(13.0F, 30 - static_cast<float>(step - 14) * 17.0F / 30),
                    0.6F);
    }
    EXPECT_EQ(seen, ".##..#.---") << "it blinks when it lands";
    EXPECT_TRUE(session.hasEnded());
    EXPECT_EQ(session.exitStatus(), 0);
}

TEST_F(SplashTest, view_and_frame_time_change_only_speed) {
    const std::pair<const char *, float> frame_times[] = {{"100", 50}, {"1", 1}, {"0", 1}};
    for (const auto &[frame_time, steps] : frame_times) {
        Session session(showSplash,
                        {.columns = 100, .config = std::string("frame_time:") + frame_time + ","});
        session.start();
        EXPECT_NEAR(session.objects<Splash>().at(0)->getVelocity().x, -84.5F / steps, 1e-3F);
        EXPECT_TRUE(session.play(89));
        EXPECT_FALSE(session.play());
    }
}

TEST_F(SplashTest, keys_and_a_closed_window_end_it) {
    for (const bool is_closed : {true, false}) {
        for (const int last : {0, 40, 80}) {
            Session session(showSplash);
            session.start();
            spawn<Object>()->setType("Splash"); // A game may use the name; only the sequence goes.
            session.play(last);
            if (is_closed)
                session.closeWindow();
            else
                session.tapKey(Keyboard::A);
            EXPECT_FALSE(session.play());
            EXPECT_EQ(session.exitStatus(), 1) << "one object is left";
        }
    }
}

} // namespace
} // namespace sv
