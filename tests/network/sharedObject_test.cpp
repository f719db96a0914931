#include "support/EngineTest.h"
#include "support/environment.h"
#include "support/waitUntil.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <future>
#include <string>

namespace {

class SharedObject : public test::EngineTest {};

TEST_F(SharedObject, moves_alike_in_both_processes) {
    writeFile("serve.txt", "headless:true,frame_time:5,record:served.record,");
    writeFile("join.txt", "headless:true,frame_time:5,record:joined.record,");
    // Two shells rather than a pipe, since not every shell runs both its ends at once. "cd ."
    // because one removes quotation marks at the start of a command line.
    const auto run = [](const std::string &arguments) {
        return std::system(("cd . && \"" SHARED_BALL "\" " + arguments).c_str());
    };
    test::setEnvironment("SELVANE_CONFIG", "serve.txt");
    // The guest leaves after its steps, and then the server ends; its own limit is for a guest that
    // never connects.
    auto served = std::async(std::launch::async, run, "serve 0 4000 > port.txt");
    std::string port;
    ASSERT_TRUE(test::waitUntil([&] {
        std::ifstream file("port.txt");
        return std::getline(file, port) && !file.eof();
    }));
    test::setEnvironment("SELVANE_CONFIG", "join.txt");
    const std::string join = "join " + std::to_string(std::stoi(port)) + " 300 > ";
    ASSERT_EQ(run(join + "seen.txt"), 0) << logText();
    ASSERT_EQ(served.get(), 0) << logText();
    EXPECT_EQ(logText().find("Not setup as server"), std::string::npos) << "the guest accepts";

    std::ifstream seen("seen.txt");
    int messages = 0;
    double last_x = 0;
    double last_y = 0;
    for (double x = 0, y = 0; seen >> x >> y; ++messages) {
        // The first message holds the whole ball, and the second may repeat its position.
        const bool repeats = messages == 0 || (messages == 1 && x == last_x);
        ASSERT_TRUE(repeats || std::abs(x - last_x) == 0.5) << messages;
        ASSERT_TRUE(repeats || std::abs(y - last_y) == 0.25) << messages;
        last_x = x;
        last_y = y;
    }
    EXPECT_GT(messages, 20);

    // Each alone, as it was recorded.
    const auto replay = [&](const std::string &record, const std::string &arguments) {
        test::setEnvironment("SELVANE_REPLAY", record);
        EXPECT_EQ(run(arguments), 0);
        std::string verdict;
        std::ifstream file("replayed.txt");
        for (std::string line; std::getline(file, line);)
            verdict = line;
        EXPECT_TRUE(verdict.ends_with(" steps, all the same")) << verdict;
    };
    test::setEnvironment("SELVANE_REPLAY_OPTIONS", "headless:true,");
    replay("joined.record", join + "replayed.txt");
    replay("served.record", "serve 0 4000 > replayed.txt");
}

} // namespace
