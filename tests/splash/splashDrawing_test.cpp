#include "selvane/splash/Splash.h"

#include "selvane/loop/GameManager.h"
#include "selvane/platform/ManualTime.h"
#include "selvane/world/WorldManager.h"
#include "support/Clockwork.h"
#include "support/WindowTest.h"

#include <map>

namespace sv {
namespace {

class SplashDrawing : public test::WindowTest {
  protected:
    ManualTime time;
};

TEST_F(SplashDrawing, the_banner_changes_its_letters_and_the_landing_blinks) {
    server.emplace();
    GameManager &game = GameManager::getInstance();
    writeFile("sv-config.txt", std::string("font_file:") + test::FONT + ",");
    ASSERT_EQ(game.startUp(), 0);
    // What stands on the screen when a step begins: after how many steps.
    std::map<int, sf::Image> pictures;
    std::map<int, int> letters;
    new test::Clockwork([&](int step) {
        if (const Object *p_banner = WorldManager::getInstance().objectsOfType("Splash").at(0))
            letters[step] = p_banner->getAnimation().getIndex();
        if (step >= 59 && step <= 61)
            pictures[step] = picture();
    });
    EXPECT_EQ(splash(), 0);

    EXPECT_EQ(letters[14], 0) << "slanted while it slides";
    EXPECT_EQ(letters[15], 1) << "upright from where it stops";
    EXPECT_EQ(letters[89], 1) << "and frozen";
    const auto right_edge_of = [&](const sf::Color &color, int step) {
        return test::extentOf(color, pictures[step]).right;
    };
    const int banner_edge = right_edge_of(sf::Color::Green, 59);
    EXPECT_GT(right_edge_of(sf::Color::Blue, 59), banner_edge);
    EXPECT_EQ(right_edge_of(sf::Color::Blue, 60), -1);
    EXPECT_EQ(right_edge_of(sf::Color::Green, 60), banner_edge);
    EXPECT_GT(right_edge_of(sf::Color::Green, 61), banner_edge);
    game.shutDown();
}

} // namespace
} // namespace sv
