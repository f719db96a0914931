// What the examples and the steps of the guide show, as the documents have it.

#include "pictures/Scene.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace {

class Example : public testing::TestWithParam<pictures::Scene> {};

TEST_P(Example, shows_its_committed_screen) {
    const pictures::Result result = play(GetParam(), TREE);
    std::ifstream file(TREE "/examples/screens/" + std::string(GetParam().name) + ".txt");
    const std::string committed(std::istreambuf_iterator<char>(file), {});
    EXPECT_GT(committed.size(), 1U) << "nothing is drawn";
    EXPECT_EQ(result.screen, committed) << "if that is as it should be: tools/make-pictures";
    EXPECT_EQ(result.status, 0);
    for (const char *complaint : {"Error", "Warning"})
        EXPECT_EQ(result.log.find(complaint), std::string::npos) << result.log;
}

INSTANTIATE_TEST_SUITE_P(, Example, testing::ValuesIn(pictures::scenes()),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
