// What can befall the machine that a game runs on, and what the person in front of it learns.

#include "network/NetworkTest.h"
#include "selvane/core/Config.h"
#include "selvane/core/EventStep.h"
#include "selvane/core/LogManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/network/message.h"
#include "selvane/platform/ManualTime.h"
#include "support/EngineTest.h"
#include "support/environment.h"
#include "support/limits.h"

#include <algorithm>
#include <filesystem>

namespace sv {

namespace {

using test::waitUntil;

/// Does something in the middle of one step.
class InStep : public Object {
  public:
    InStep(int new_step, std::function<void()> new_action)
        : step(new_step), action(std::move(new_action)) {
        registerInterest(STEP_EVENT);
    }

    int eventHandler(const Event *p_event) override {
        const auto *p_step = dynamic_cast<const EventStep *>(p_event);
        if (p_step && p_step->getStepCount() == step)
            action();
        return 1;
    }

  private:
    int step;
    std::function<void()> action;
};

class MachineFaults : public test::EngineTest {
  protected:
    ~MachineFaults() override {
        if (game.isStarted())
            game.shutDown();
    }

    int start(const std::string &config = "") {
        writeFile("headless.txt", "headless:true," + config);
        test::setEnvironment(CONFIG_FILE_VARIABLE,
                             std::filesystem::absolute("headless.txt").string());
        prepareLog();
        return game.startUp();
    }

    /// With an action at the end of each step, which gets its number, from 1.
    void runSteps(int count, const std::function<void(int)> &action = nullptr) {
        time.sleeps.clear();
        time.during_sleep = [&, count] {
            const int done = static_cast<int>(time.sleeps.size());
            if (action)
                action(done);
            game.setGameOver(done == count);
        };
        game.run();
    }

    GameManager &game = GameManager::getInstance();
    NetworkManager &network = NetworkManager::getInstance();
    ManualTime time;
};

TEST_F(MachineFaults, in_a_folder_that_takes_no_files_the_log_is_missed_and_may_go_elsewhere) {
    if (!std::filesystem::exists("/proc/self"))
        GTEST_SKIP() << "no folder here that refuses files to everybody";
    const std::filesystem::path writable = std::filesystem::current_path();
    start();
    game.shutDown();
    std::filesystem::current_path("/proc");
    {
        test::CapturedErrors errors;
        EXPECT_EQ(game.startUp(), -1);
        EXPECT_TRUE(errors.take().starts_with("LogManager::startup(): Warning! Unable to open file "
                                              "'selvane.log'.\nError starting log manager!\n"));
    }
    test::setEnvironment(LOG_FILE_VARIABLE, (writable / "elsewhere.log").string());
    EXPECT_EQ(game.startUp(), 0);
    runSteps(3);
    EXPECT_EQ(game.getStepCount(), 3);
    std::filesystem::current_path(writable);
}

TEST_F(MachineFaults, a_clock_that_is_set_changes_no_steps_length) {
    constexpr long long hour = 3'600'000;
    for (const long long change : {-hour, hour, -24 * hour, 24 * hour}) {
        SCOPED_TRACE(change);
        time.now_ms = 30 * hour;
        ASSERT_EQ(start(), 0);
        new InStep(5, [&] { time.now_ms += change; });
        runSteps(20, [&](int step) { time.now_ms += step == 10 ? change : 0; });
        EXPECT_LE(game.getStepCount(), 22) << "two steps may come without a sleep";
        EXPECT_LE(*std::max_element(time.sleeps.begin(), time.sleeps.end()), 33);
        EXPECT_EQ(std::count(time.sleeps.begin() + 12, time.sleeps.end(), 33), 8);
        game.shutDown();
    }
}

TEST_F(MachineFaults, without_files_left_a_peer_waits_until_there_are_some) {
    ASSERT_EQ(start("networking:true,"), 0);
    ASSERT_EQ(network.setServer(0), 0);
    // A sanitizer needs descriptors itself for each class that it sees for the first time.
    runSteps(1);
    EXPECT_FALSE(platform::socketErrorText(1).empty());
    test::Peer peer(network.getPort());
    for (int episode = 1; episode <= 2; ++episode) {
        if (!test::allowNoMoreFiles())
            GTEST_SKIP() << "the system sets no limit";
        runSteps(10);
        EXPECT_EQ(network.getNumConnections(), episode - 1);
        test::allowMoreFiles();
        EXPECT_EQ(logCount("NetworkManager::accept(): Error! accept() returned:"), 10 * episode);
        runSteps(2);
        EXPECT_EQ(network.getNumConnections(), 1);
    }
    EXPECT_FALSE(peer.seesEnd());
}

TEST_F(MachineFaults, a_peer_that_sends_a_byte_a_step_delays_nobody) {
    ASSERT_EQ(start("networking:true,"), 0);
    ASSERT_EQ(network.setServer(0), 0);
    network.setMaxSockets(2);
    test::Peer slow(network.getPort());
    ASSERT_TRUE(waitUntil([&] { return network.accept() == 0; }));
    test::Peer good(network.getPort());
    ASSERT_TRUE(waitUntil([&] { return network.accept() == 1; }));
    std::vector<std::string> heard;
    new test::NetworkListener([&](const EventNetwork &event) {
        std::string message;
        if (network.receive(message, event.getSocketIndex()) > 0)
            heard.emplace_back(messageBody(message));
    });
    const std::string dripping = makeMessage("drop by drop");
    for (std::size_t i = 0; i < dripping.size(); ++i) {
        heard.clear();
        slow.send(dripping.substr(i, 1));
        good.send(makeMessage("good"));
        ASSERT_TRUE(waitUntil([&] { return network.isData(1) == 8; }));
        runSteps(1);
        ASSERT_EQ(time.sleeps[0], 33);
        ASSERT_EQ(std::count(heard.begin(), heard.end(), "good"), 1);
    }
    EXPECT_TRUE(waitUntil([&] {
        runSteps(1);
        return std::count(heard.begin(), heard.end(), "drop by drop") == 1;
    }));
}

} // namespace

} // namespace sv
