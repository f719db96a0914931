// A process that ends in the middle of its game, with music on.

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/resources/ResourceManager.h"
#include "support/Clockwork.h"
#include "support/EngineTest.h"
#include "support/environment.h"
#include "support/waveFile.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

class Exit : public test::EngineTest {
  protected:
    Exit() {
        testing::GTEST_FLAG(death_test_style) = "fast";
        test::setEnvironment("ALSOFT_DRIVERS", "null");
        shareLog();
        writeFile("beep.wav", test::waveFile(std::vector<std::int16_t>(400, 9000)));
    }

    /// Plays a sound and ten tracks, and leaves in a step.
    [[noreturn]] static void leaveInAStep() {
        if (std::freopen("errors.txt", "w", stderr) == nullptr)
            std::exit(4);
        sv::GameManager &game = sv::GameManager::getInstance();
        prepareLog();
        sv::Config::getInstance().loadConfig("headless:true,frame_time:1,");
        if (game.startUp() != 0)
            std::exit(2);
        sv::ResourceManager &resources = sv::ResourceManager::getInstance();
        resources.loadSound("beep.wav", "beep");
        resources.getSound("beep")->play(true);
        for (const std::string label : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
            resources.loadMusic("beep.wav", label);
            resources.getMusic(label)->play(true);
        }
        new test::Clockwork([](int step) {
            if (step == 20)
                std::exit(0);
        });
        game.run();
        std::exit(3);
    }
};

/// Looks after the game to the very end, as many programs have it.
struct Guard {
    ~Guard() {
        sv::ResourceManager &resources = sv::ResourceManager::getInstance();
        resources.getSound("beep")->play();
        resources.getMusic("0")->stop();
        resources.getMusic("0")->play(true);
        if (resources.loadMusic("beep.wav", "late") != -1 ||
            resources.loadSound("missing.wav", "late") != -1)
            std::_Exit(5);
        sv::LogManager::getInstance().writeLog("stopping");
        sv::GameManager::getInstance().shutDown();
    }
};

} // namespace

TEST_F(Exit, destructors_may_stop_the_game) {
    EXPECT_EXIT(
        {
            sv::GameManager::getInstance();
            static const Guard guard;
            leaveInAStep();
        },
        testing::ExitedWithCode(0), "");
    std::ifstream file("errors.txt");
    const std::string errors{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(errors.find("device not closed"), std::string::npos) << "OpenAL's complaint";
    const std::string text = logText();
    EXPECT_NE(text.find("stopping\n"), std::string::npos);
    EXPECT_NE(text.find("** Game engine stopped **\n"), std::string::npos);
}
