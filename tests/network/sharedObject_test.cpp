#include "support/EngineTest.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace {

class SharedObject : public test::EngineTest {};

TEST_F(SharedObject, moves_in_another_process_as_in_its_own) {
    writeFile("sv-config.txt", "headless:true,frame_time:5,");
    const std::string ball = "\"" SHARED_BALL "\"";
    // The guest leaves after its steps, and with it the server; the server's own limit is there
    // for a guest that never comes.
    const std::string both = ball + " serve 0 4000 | " + ball + " join - 300 > seen.txt";
    ASSERT_EQ(std::system(both.c_str()), 0) << logText();

    std::ifstream seen("seen.txt");
    std::vector<std::pair<double, double>> places;
    for (double x = 0, y = 0; seen >> x >> y;)
        places.emplace_back(x, y);
    ASSERT_GT(places.size(), 20U);
    for (std::size_t i = 1; i < places.size(); ++i) {
        // The first message is the whole ball, the second may tell of the same place.
        const double dx = std::abs(places[i].first - places[i - 1].first);
        ASSERT_TRUE(dx == 0.5 || (i == 1 && dx == 0)) << i << ": " << dx;
        ASSERT_EQ(std::abs(places[i].second - places[i - 1].second), dx / 2) << i;
    }
}

} // namespace
