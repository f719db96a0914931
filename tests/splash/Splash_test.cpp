#include "splash/Splash.h"

#include "core/Event.h"
#include "core/LogManager.h"
#include "input/EventKeyboard.h"
#include "input/InputManager.h"
#include "loop/GameManager.h"
#include "splash/Clockwork.h"
#include "support/EngineTest.h"
#include "support/ManualTime.h"
#include "support/printing.h"
#include "world/Object.h"
#include "world/WorldManager.h"

#include <algorithm>

namespace sv {
namespace {

using test::Clockwork;
using test::only;

class SplashTest : public test::EngineTest {
  protected:
    ~SplashTest() override {
        if (game.isStarted())
            game.shutDown();
    }

    void start(const std::string &settings) {
        prepareLog(10);
        writeFile("sv-config.txt", settings + ",");
        ASSERT_EQ(game.startUp(), 0);
    }

    test::ManualTime time;
    GameManager &game = GameManager::getInstance();
};

TEST_F(SplashTest, without_a_started_game_there_is_nothing_but_a_word) {
    startLog(10);
    EXPECT_EQ(splash(), -1);
    EXPECT_EQ(logCount("splash(): Error! Cannot run splash screen until game manger is started."),
              1);
    EXPECT_TRUE(WorldManager::getInstance().getAllObjects(true).isEmpty());
}

TEST_F(SplashTest, the_sequence_keeps_its_timeline_and_ends_by_itself) {
    start("headless:true");
    std::vector<std::string> diary;
    new Clockwork([&](int step) {
        const Object *p_banner = only("Splash");
        const Object *p_creature = only("SplashSelvane");
        // Before this step's own handling: the banner handles its event after this one.
        if (step == 1) {
            EXPECT_EQ(p_banner->getPosition(), (Vector{103.5F, 12}));
        }
        if (step == 16) {
            EXPECT_NEAR(p_banner->getPosition().x, 103.5F - 14 * 74.5F / 16, 1e-3F);
            EXPECT_EQ(p_banner->getVelocity(), (Vector{0, 0}));
            ASSERT_TRUE(p_creature);
            EXPECT_NEAR(p_creature->getPosition().x, p_banner->getPosition().x + 24, 1e-3F);
            EXPECT_NEAR(p_creature->getPosition().y, 30 - 17.0F / 30, 1e-3F);
        }
        EXPECT_EQ(p_creature != nullptr, step > 15) << step;
        if (step == 47) {
            EXPECT_NEAR(p_creature->getPosition().y, 13, 0.6F);
        }
        if (step == 61) {
            EXPECT_NEAR(p_creature->getPosition().x, p_banner->getPosition().x + 23, 1e-3F);
        }
    });
    EXPECT_EQ(splash(), 0);
    EXPECT_EQ(game.getStepCount(), 90);
    EXPECT_TRUE(game.getGameOver());
    EXPECT_EQ(WorldManager::getInstance().getAllObjects(true).getCount(), 1) << "the clockwork";
}

TEST_F(SplashTest, another_view_and_frame_time_change_the_speed_and_not_the_timing) {
    const struct {
        const char *frame_time;
        float steps;
    } cases[] = {{"100", 50}, {"1", 1}, {"0", 1}};
    for (const auto &c : cases) {
        start("headless:true,window_horizontal_chars:100,frame_time:" + std::string(c.frame_time));
        const auto *p_banner = new Splash;
        EXPECT_NEAR(p_banner->getVelocity().x, -84.5F / c.steps, 1e-3F) << c.frame_time;
        delete p_banner;
        EXPECT_EQ(splash(), 0);
        EXPECT_EQ(game.getStepCount(), 90);
        game.shutDown();
    }
}

TEST_F(SplashTest, any_key_ends_it_at_once) {
    start("headless:true");
    int end = 0;
    new Clockwork([&](int step) {
        if (step != end)
            return;
        EventKeyboard key;
        key.setKey(Keyboard::A);
        key.setKeyboardAction(KEY_PRESSED);
        InputManager::getInstance().onEvent(&key);
    });
    for (end = 1; end <= 80; end += 20) {
        EXPECT_EQ(splash(), 0);
        EXPECT_EQ(game.getStepCount(), end);
        EXPECT_EQ(WorldManager::getInstance().getAllObjects(true).getCount(), 1);
    }
}

TEST_F(SplashTest, closing_the_window_ends_it_and_leaves_nothing_behind) {
    start("headless:true");
    for (const int end : {5, 40}) {
        auto *p_clockwork = new Clockwork([&](int step) {
            if (step == end)
                game.setGameOver(); // What the input manager makes of it.
        });
        p_clockwork->setType("Splash"); // A game may use the name; only the sequence goes.
        EXPECT_EQ(splash(), 0);
        EXPECT_EQ(game.getStepCount(), end);
        EXPECT_EQ(WorldManager::getInstance().getAllObjects(true).getCount(), 1);
        delete p_clockwork;
    }
}

} // namespace
} // namespace sv
