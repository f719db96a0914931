#include "selvane/splash/Splash.h"

#include "selvane/core/EventKeyboard.h"
#include "selvane/input/InputManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/platform/ManualTime.h"
#include "selvane/world/WorldManager.h"
#include "support/Clockwork.h"
#include "support/EngineTest.h"
#include "support/printing.h"

#include <functional>
#include <utility>

namespace sv {
namespace {

using test::Clockwork;

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

    static Object *only(const char *type) {
        const ObjectList found = WorldManager::getInstance().objectsOfType(type);
        return found.getCount() == 1 ? found.at(0) : nullptr;
    }

    ManualTime time;
    GameManager &game = GameManager::getInstance();
};

TEST_F(SplashTest, without_a_started_game_there_is_nothing_but_a_word) {
    startLog(10);
    EXPECT_EQ(splash(), -1);
    expectLogged({"splash(): Error! Cannot run splash screen until game manger is started."});
    EXPECT_TRUE(WorldManager::getInstance().getAllObjects(true).isEmpty());
}

TEST_F(SplashTest, the_sequence_keeps_its_timeline_and_ends_by_itself) {
    start("headless:true");
    new Clockwork([&](int step) {
        const Object *p_banner = only("Splash");
        const Object *p_creature = only("SplashSelvane");
        // Before this step's own handling: the banner handles its event after this one.
        EXPECT_EQ(p_creature != nullptr, step > 14) << step;
        if (step == 0) {
            EXPECT_EQ(p_banner->getPosition(), (Vector{103.5F, 12}));
        } else if (step == 15) {
            EXPECT_NEAR(p_banner->getPosition().x, 103.5F - 14 * 74.5F / 16, 1e-3F);
            EXPECT_EQ(p_banner->getVelocity(), (Vector{0, 0}));
            EXPECT_NEAR(p_creature->getPosition().x, p_banner->getPosition().x + 24, 1e-3F);
            EXPECT_NEAR(p_creature->getPosition().y, 30 - 17.0F / 30, 1e-3F);
        } else if (step == 46) {
            EXPECT_NEAR(p_creature->getPosition().y, 13, 0.6F);
        } else if (step == 60) {
            EXPECT_NEAR(p_creature->getPosition().x, p_banner->getPosition().x + 23, 1e-3F);
        }
    });
    EXPECT_EQ(splash(), 0);
    EXPECT_EQ(game.getStepCount(), 90);
    EXPECT_TRUE(game.getGameOver());
    EXPECT_EQ(WorldManager::getInstance().getAllObjects(true).getCount(), 1) << "the clockwork";
}

TEST_F(SplashTest, another_view_and_frame_time_change_the_speed_and_not_the_timing) {
    const std::pair<const char *, float> frame_times[] = {{"100", 50}, {"1", 1}, {"0", 1}};
    for (const auto &[frame_time, steps] : frame_times) {
        start(std::string("headless:true,window_horizontal_chars:100,frame_time:") + frame_time);
        const auto *p_banner = new Splash;
        EXPECT_NEAR(p_banner->getVelocity().x, -84.5F / steps, 1e-3F) << frame_time;
        delete p_banner;
        EXPECT_EQ(splash(), 0);
        EXPECT_EQ(game.getStepCount(), 90);
        game.shutDown();
    }
}

TEST_F(SplashTest, any_key_and_the_end_of_the_game_end_it_at_once_and_leave_nothing_behind) {
    start("headless:true");
    EventKeyboard key;
    key.setKey(Keyboard::A);
    key.setKeyboardAction(KEY_PRESSED);
    const std::function<void()> ends[] = {
        [&] { InputManager::getInstance().onEvent(&key); },
        // As a closed window does: when the sequence has had its events of the step.
        [&] { time.during_sleep = [&] { game.setGameOver(); }; }};
    for (const auto &end_it : ends) {
        for (const int last : {0, 40, 80}) {
            Clockwork clockwork([&](int step) {
                if (step == last)
                    end_it();
            });
            clockwork.setType("Splash"); // A game may use the name; only the sequence goes.
            EXPECT_EQ(splash(), 0);
            time.during_sleep = nullptr;
            EXPECT_EQ(game.getStepCount(), last + 1);
            EXPECT_EQ(WorldManager::getInstance().getAllObjects(true).getCount(), 1);
        }
    }
}

} // namespace
} // namespace sv
