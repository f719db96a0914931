// A process that ends in the middle of its game, with music on.

#include "selvane/core/EventStep.h"
#include "selvane/core/LogManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/world/Object.h"
#include "support/EngineTest.h"
#include "support/environment.h"
#include "support/waveFile.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

sv::GameManager &game() {
    return sv::GameManager::getInstance();
}

sv::ResourceManager &resources() {
    return sv::ResourceManager::getInstance();
}

struct Leaver : sv::Object {
    Leaver() { registerInterest(sv::STEP_EVENT); }
    int eventHandler(const sv::Event * /*p_event*/) override {
        if (game().getStepCount() == 20)
            std::exit(0);
        return 1;
    }
};

/// Plays a sound and ten tracks, and leaves in a step.
[[noreturn]] void leaveInAStep() {
    if (std::freopen("errors.txt", "w", stderr) == nullptr)
        std::exit(4);
    if (game().startUp() != 0)
        std::exit(2);
    resources().loadSound("beep.wav", "beep");
    resources().getSound("beep")->play(true);
    for (const std::string label : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
        resources().loadMusic("beep.wav", label);
        resources().getMusic(label)->play(true);
    }
    new Leaver;
    game().run();
    std::exit(3);
}

/// Looks after the game to the very end, as many programs have it.
struct Guard {
    ~Guard() {
        resources().getSound("beep")->play();
        resources().getMusic("0")->stop();
        resources().getMusic("0")->play(true);
        if (resources().loadMusic("beep.wav", "late") != -1 ||
            resources().loadSound("missing.wav", "late") != -1)
            std::_Exit(5);
        sv::LogManager::getInstance().writeLog("stopping");
        game().shutDown();
    }
};

using Exit = test::EngineTest;

TEST_F(Exit, destructors_may_stop_the_game) {
    testing::GTEST_FLAG(death_test_style) = "fast";
    test::setEnvironment("ALSOFT_DRIVERS", "null");
    writeFile("beep.wav", test::waveFile(std::vector<std::int16_t>(400, 9000)));
    writeFile("sv-config.txt", "headless:true,frame_time:1,");
    // The process that ends writes into this one's log. A system without fork() does the test anew
    // there, in a folder of its own.
    constexpr char shared_log[] = "SELVANE_TEST_LOG"; // Set by the first of the processes.
    if (std::getenv(shared_log) == nullptr)
        test::setEnvironment(shared_log, std::filesystem::absolute("selvane.log").string());
    test::setEnvironment(sv::LOG_FILE_VARIABLE, std::getenv(shared_log));
    EXPECT_EXIT(
        {
            game();
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

} // namespace
