// The game in a real window, with keys and a mouse that go through an X server.

#include "demo/GamePlayer.h"
#include "demo/XHands.h"
#include "game/playGame.h"
#include "support/WindowTest.h"
#include "support/environment.h"
#include "support/waitUntil.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>

namespace {

using demo::Stage;

struct GameInWindow : test::WindowTest {
    GameInWindow() {
        test::setEnvironment("ALSOFT_DRIVERS", "null");
        server.emplace(1600, 1600);
        EXPECT_TRUE(server->isRunning());
        std::filesystem::copy_file(test::FONT, "sv-font.ttf");
        for (const char *art : {"sprites", "sounds"})
            std::filesystem::create_directory_symlink(std::filesystem::path(GAME_FOLDER) / art,
                                                      art);
        // As shipped, but for the settings before it.
        std::ofstream("sv-config.txt") << "frame_time:5,random_seed:1,background_input:true,\n"
                                       << std::ifstream(GAME_FOLDER "/game/sv-config.txt").rdbuf();
    }

    /// Whether the X server's screen shows what the game has drawn.
    bool isOnScreen() const {
        const sf::Image drawn = picture();
        const auto pixels = server->pixels();
        sf::Image shown;
        shown.create(drawn.getSize().x, drawn.getSize().y, pixels.data());
        return test::difference(shown, drawn) <= 1;
    }

    /// Plays the record of this process, which is not closed yet, as the game without a window, and
    /// as a film in a terminal.
    static void expectReplayed() {
        test::clearEnvironment("DISPLAY");
        ASSERT_EQ(std::system("'" REPLAY "' --stop 100 --screen 100 --cast game.cast '" SELVANE_GAME
                              "' game.record > replayed.txt"),
                  0);
        ASSERT_EQ(std::system("/usr/bin/python3 '" TERMINAL "' game.cast > terminal.txt"), 0);
        const std::string shown = readFile("terminal.txt");
        EXPECT_GT(std::ranges::count(shown, '#'), 20) << "targets";
        EXPECT_EQ(readFile("replayed.txt"), "-- step 100\n" + shown + "100 steps, all the same\n");
        EXPECT_EQ(std::system("'" REPLAY "' '" SELVANE_GAME "' game.record > replayed.txt"), 0);
        EXPECT_NE(readFile("replayed.txt")
                      .find(" steps, all the same; the record ends there without an end\n"),
                  std::string::npos)
            << readFile("replayed.txt");
    }

    static std::string readFile(const std::string &name) {
        std::ifstream file(name);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// Returns the program's exit status; kills it after 50 seconds. Leaks are not looked for here,
    /// since a graphics driver leaves some when it is unloaded; the other cases look for the
    /// game's.
    static int runProgram() {
        constexpr char command[] =
            "ASAN_OPTIONS=$ASAN_OPTIONS:detect_leaks=0 timeout 50 '" SELVANE_GAME "'";
        return WEXITSTATUS(std::system(command));
    }
};

TEST_F(GameInWindow, keys_and_mouse_win_it) {
    test::setEnvironment("SELVANE_RECORD", "game.record");
    demo::XHands hands(*server);
    demo::GamePlayer player(hands, demo::Plan::RIGHT);
    new demo::PlayerInLoop(player);
    player.look_steps = 3; // A frame is shown in the step after the one that draws it.
    player.on_sight = [&](Stage stage) {
        if (stage == Stage::SPLASH) {
            EXPECT_TRUE(server->enterWindow());
            server->pressKey("x"); // Ends the title sequence.
            server->releaseKey("x");
        } else {
            EXPECT_TRUE(test::waitUntil([&] { return isOnScreen(); })) << nameOf(stage);
        }
    };
    EXPECT_EQ(playGame(), 0);
    EXPECT_FALSE(player.isStuck());
    EXPECT_EQ(player.getStory().back(), "won: YOU WIN!!!");
    EXPECT_EQ(logText().find("Error!"), std::string::npos);
    expectReplayed();
}

TEST_F(GameInWindow, q_ends_the_program_with_status_0) {
    auto status = std::async(std::launch::async, runProgram);
    EXPECT_TRUE(server->enterWindow());
    // The title sequence takes one, the title another.
    while (status.wait_for(std::chrono::milliseconds(50)) != std::future_status::ready) {
        server->pressKey("q");
        server->releaseKey("q");
    }
    EXPECT_EQ(status.get(), 0);
    EXPECT_NE(logText().find("** Game engine stopped **"), std::string::npos);
}

TEST_F(GameInWindow, a_missing_display_ends_with_status_1) {
    test::clearEnvironment("DISPLAY");
    EXPECT_EQ(runProgram(), 1);
    EXPECT_NE(logText().find("Error starting GameManager!"), std::string::npos);
}

} // namespace
