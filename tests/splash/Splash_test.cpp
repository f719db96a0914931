#include "selvane/splash/Splash.h"

#include "selvane/core/EventKeyboard.h"
#include "selvane/display/ScreenCapture.h"
#include "selvane/input/InputManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/platform/ManualTime.h"
#include "selvane/world/WorldManager.h"
#include "support/Clockwork.h"
#include "support/EngineTest.h"
#include "support/printing.h"

#include <functional>
#include <string>
#include <vector>

namespace sv {
namespace {

using test::Clockwork;

class SplashTest : public test::EngineTest {
  protected:
    ~SplashTest() override {
        if (game.isStarted())
            game.shutDown();
    }

    void start(const std::string &settings = "") {
        prepareLog(10);
        writeFile("sv-config.txt", "headless:true," + settings);
        ASSERT_EQ(game.startUp(), 0);
    }

    static Object *only(const char *type) {
        const ObjectList found = WorldManager::getInstance().objectsOfType(type);
        return found.getCount() == 1 ? found.at(0) : nullptr;
    }

    static bool has(const std::string &text, const char *part) {
        return text.find(part) != std::string::npos;
    }

    ManualTime time;
    GameManager &game = GameManager::getInstance();
};

TEST_F(SplashTest, needs_a_started_game) {
    startLog(10);
    EXPECT_EQ(splash(), -1);
    expectLogged({"splash(): Error! Cannot run splash screen until game manger is started."});
    EXPECT_TRUE(WorldManager::getInstance().getAllObjects(true).isEmpty());
}

TEST_F(SplashTest, sequence_keeps_its_timeline) {
    start();
    captureScreen();
    std::vector<std::string>
        screens; // Before each step: what was drawn in the one before the last.
    std::vector<std::string> colors;
    new Clockwork([&](int step) {
        screens.push_back(screenText());
        colors.push_back(screenColors());
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

    std::string seen; // The spread wings, none, and the creature on the ground.
    for (std::size_t step = 55; step < 65; ++step)
        seen += has(screens[step], "####(O)####") ? '#' : has(screens[step], "_-(O)-_") ? '-' : '.';
    EXPECT_EQ(seen, ".##..#.---") << "it blinks when it lands";
    EXPECT_TRUE(has(colors[55], "b"));
    EXPECT_FALSE(has(colors[65], "b"));
    for (const std::size_t step : {11U, 15U, 16U, 89U}) {
        EXPECT_EQ(has(screens[step], "__/ /___ /__"), step < 16) << "slanted at " << step;
        EXPECT_EQ(has(screens[step], "|___| |___|"), step >= 16) << "upright at " << step;
    }
}

TEST_F(SplashTest, view_and_frame_time_change_only_speed) {
    const std::pair<const char *, float> frame_times[] = {{"100", 50}, {"1", 1}, {"0", 1}};
    for (const auto &[frame_time, steps] : frame_times) {
        start(std::string("window_horizontal_chars:100,frame_time:") + frame_time + ",");
        const auto *p_banner = new Splash;
        EXPECT_NEAR(p_banner->getVelocity().x, -84.5F / steps, 1e-3F) << frame_time;
        delete p_banner;
        EXPECT_EQ(splash(), 0);
        EXPECT_EQ(game.getStepCount(), 90);
        game.shutDown();
    }
}

TEST_F(SplashTest, keys_and_a_closed_window_end_it) {
    start();
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
