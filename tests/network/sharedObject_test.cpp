#include "network/NetworkTest.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <future>
#include <string>
#include <vector>

namespace {

class SharedObject : public test::EngineTest {};

TEST_F(SharedObject, moves_alike_in_both_processes) {
    writeFile("sv-config.txt", "headless:true,frame_time:5,");
    // Two shells rather than a pipe, since not every shell runs both its ends at once. "cd ."
    // because one removes quotation marks at the start of a command line.
    const auto run = [](const std::string &arguments) {
        return std::system(("cd . && \"" SHARED_BALL "\" " + arguments).c_str());
    };
    // The guest leaves after its steps, and then the server ends; its own limit is for a guest that
    // never connects.
    auto served = std::async(std::launch::async, run, "serve 0 4000 > port.txt");
    std::string port;
    ASSERT_TRUE(test::waitUntil([&] {
        std::ifstream file("port.txt");
        return std::getline(file, port) && !file.eof();
    }));
    ASSERT_EQ(run("join " + std::to_string(std::stoi(port)) + " 300 > seen.txt"), 0) << logText();
    ASSERT_EQ(served.get(), 0) << logText();
    EXPECT_EQ(logText().find("Not setup as server"), std::string::npos) << "the guest accepts";

    std::ifstream seen("seen.txt");
    std::vector<std::pair<double, double>> places;
    for (double x = 0, y = 0; seen >> x >> y;)
        places.emplace_back(x, y);
    ASSERT_GT(places.size(), 20U);
    for (std::size_t i = 1; i < places.size(); ++i) {
        // The first message holds the whole ball, and the second may repeat its position.
        const double dx = std::abs(places[i].first - places[i - 1].first);
        ASSERT_TRUE(dx == 0.5 || (i == 1 && dx == 0)) << i << ": " << dx;
        ASSERT_EQ(std::abs(places[i].second - places[i - 1].second), dx / 2) << i;
    }
}

} // namespace
