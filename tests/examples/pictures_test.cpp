// The pictures of the documents are those of the programs beside them.

#include "pictures/Scene.h"
#include "support/WindowTest.h"

namespace {

constexpr int color_step = 17; // Of 255: pictures have 16 levels of each component.

/// All in one process, and so on one display: to start a window for the first time takes longer
/// than to play a scene.
struct Picture : test::WindowTest, testing::WithParamInterface<pictures::Scene> {
    static void SetUpTestSuite() { display.emplace(); }
    static void TearDownTestSuite() { display.reset(); }
    inline static std::optional<demo::XServer> display;
};

TEST_P(Picture, is_what_its_program_draws) {
    play(GetParam(), TREE, std::filesystem::absolute("made.png").string());
    sf::Image made;
    sf::Image committed;
    ASSERT_TRUE(made.loadFromFile("made.png"));
    ASSERT_TRUE(
        committed.loadFromFile(TREE "/examples/pictures/" + std::string(GetParam().name) + ".png"));
    EXPECT_LE(test::difference(made, committed), color_step) << "run tools/make-pictures";
}

INSTANTIATE_TEST_SUITE_P(, Picture, testing::ValuesIn(pictures::scenes()),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
