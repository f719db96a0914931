#include "network/NetworkTest.h"
#include "selvane/core/LogManager.h"
#include "support/WindowedProgram.h"
#include "support/environment.h"

#include <cstdlib>

namespace {

/// The game's folder as a person unpacks it, with a log of level 10.
class GameProgram : public test::EngineTest {
  protected:
    void SetUp() override {
        const char *p_folder = std::getenv("SELVANE_TEST_GAME");
        ASSERT_NE(p_folder, nullptr) << "no folder with a game to start";
        std::filesystem::copy(p_folder, "game", std::filesystem::copy_options::recursive);
        std::filesystem::current_path("game");
        test::setEnvironment(sv::LOG_LEVEL_VARIABLE, "10");
    }

    static int pixelsOf(const sf::Color &color, const sf::Image &image) {
        int count = 0;
        for (unsigned y = 0; y < image.getSize().y; ++y)
            for (unsigned x = 0; x < image.getSize().x; ++x)
                count += image.getPixel(x, y) == color ? 1 : 0;
        return count;
    }

    /// Waits until the window shows enough pixels of that colour, and saves the picture.
    static void see(const test::WindowedProgram &game, const sf::Color &color,
                    const std::string &name) {
        constexpr int enough = 1000; // Both titles have hundreds of letters in their colour.
        sf::Image picture;
        EXPECT_TRUE(test::waitUntil([&] {
            picture = game.picture();
            return pixelsOf(color, picture) > enough;
        })) << name
            << ": " << pixelsOf(color, picture);
        keep(picture, name);
    }

    /// Saves it for a person to look at, if SELVANE_TEST_PICTURES names a folder.
    static void keep(const sf::Image &image, const std::string &name) {
        if (const char *p_folder = std::getenv("SELVANE_TEST_PICTURES"))
            image.saveToFile(std::string(p_folder) + "/" + name + ".png");
    }
};

TEST_F(GameProgram, shows_both_titles_and_quits_on_q) {
    test::WindowedProgram game(std::filesystem::current_path() / "selvane_game.exe");
    see(game, sf::Color::Green, "sequence");
    game.pressKey(' ');
    see(game, sf::Color::Cyan, "title");
    game.releaseKey(' ');
    EXPECT_TRUE(game.isRunning());
    game.pressKey('Q');
    EXPECT_EQ(game.waitForEnd(), 0) << logText();
    EXPECT_EQ(logText().find("Warning!"), std::string::npos) << logText();
}

} // namespace
