// Whole games in a real window, with keys and a mouse that go through an X server.

#include "demo/GamePlayer.h"
#include "demo/XHands.h"
#include "game/LevelManager.h"
#include "game/playGame.h"
#include "support/ScreenText.h"
#include "support/WindowTest.h"
#include "support/environment.h"
#include "support/soundsIn.h"
#include "support/waitUntil.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <map>
#include <utility>

namespace {

using demo::GamePlayer;
using demo::Plan;
using demo::Stage;
namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

/// A blank at the text's end counts for its width but is not shown.
std::string centred(const std::string &text, std::size_t middle) {
    const std::string line = std::string(middle - text.size() / 2, ' ') + text;
    return line.substr(0, line.find_last_not_of(' ') + 1);
}

Lines framed(const std::string &text, std::size_t middle) {
    const std::string inside = " " + text + " ";
    const std::string rule = centred(std::string(inside.size(), '-'), middle);
    return {rule, centred("|" + inside + "|", middle), rule};
}

class GameInWindow : public test::WindowTest {
  protected:
    GameInWindow() {
        test::setEnvironment("ALSOFT_DRIVERS", "null");
        server.emplace(1600, 1600);
        EXPECT_TRUE(server->isRunning());
        hands.emplace(*server);
        fs::copy_file(test::FONT, "sv-font.ttf");
        prepareLog();
    }

    /// Sets a window that can be read and a seed whose first game can be won.
    static void configure() {
        writeFile("sv-config.txt", std::string("frame_time:5,random_seed:1,") +
                                       test::READABLE_WINDOW + "," + test::HIGHER_WINDOW + ",");
    }

    static void addArt() {
        fs::create_directory_symlink(SPRITES, "sprites");
        fs::create_directory_symlink(SOUNDS, "sounds");
    }

    /// Plays a game to its end, and ends the title sequence by a key.
    const Lines &play(Plan plan, int last_level, const std::function<bool(Stage)> &instead = {}) {
        static GamePlayer &player = *new GamePlayer(*hands, plan, last_level);
        player.on_sight = on_sight;
        player.instead = [&, instead](Stage stage) {
            if (stage == Stage::SPLASH && !std::exchange(is_inside, true)) {
                EXPECT_TRUE(server->enterWindow());
            }
            if (instead && instead(stage))
                return true;
            if (stage == Stage::SPLASH)
                tap("x");
            return false;
        };
        EXPECT_EQ(playGame(), 0);
        EXPECT_FALSE(player.isStuck());
        expectLogged({"** Game engine stopped **"});
        return player.getStory();
    }

    /// Plays a game that is lost, and closes its window in that stage instead.
    void closeAt(Stage stage) {
        configure();
        const Lines &story = play(Plan::NO_SHOT, 1, [&](Stage seen) {
            if (seen == stage)
                server->closeWindow();
            return seen == stage;
        });
        EXPECT_TRUE(story.back().starts_with(nameOf(stage))) << story.back();
    }

    /// Whether the X server's screen shows what the game has drawn.
    bool isOnScreen() const {
        const sf::Image drawn = picture();
        const auto pixels = server->pixels();
        sf::Image shown;
        shown.create(drawn.getSize().x, drawn.getSize().y, pixels.data());
        return test::difference(shown, drawn).levels <= 1;
    }

    /// A text in the middle and its prompt, on the X server's screen too.
    void checkText(Stage stage, const Lines &rows) const {
        const LevelManager &level = LevelManager::getInstance();
        const std::map<Stage, std::pair<std::string, std::string>> expected = {
            {Stage::LEVEL, {"LEVEL  " + std::to_string(level.getLevel()), "S TO CONTINUE"}},
            {Stage::REMEMBER, {"REMEMBER TO SHOOT... ", "H TO CONTINUE"}},
            {Stage::NUMBER, {std::to_string(level.getNumber()), "A TO CONTINUE"}},
            {Stage::COLOR, {wordOf(level.getColor()), "P TO CONTINUE"}},
            {Stage::SHAPE, {wordOf(level.getShape()) + "s", "E TO CONTINUE"}},
            {Stage::GO, {"GO!", "SPACE TO CONTINUE"}},
            {Stage::WON, {"YOU WIN!!!", "Q TO QUIT"}},
        };
        const auto &[text, prompt] = expected.at(stage);
        EXPECT_EQ(rows.at(19), centred(text, 39));
        EXPECT_EQ(Lines(rows.end() - 3, rows.end()), framed("PRESS " + prompt, 39));
        EXPECT_EQ(std::ranges::count(rows, ""), 36) << nameOf(stage) << ": nothing else";
        EXPECT_TRUE(HasFailure() || test::waitUntil([&] { return isOnScreen(); }));
    }

    /// Timer, button and reticle. No target of this seed covers them.
    static void checkLevel(const test::ScreenText &screen, const Lines &rows) {
        EXPECT_EQ(rows.at(1).substr(6, 14), framed("TIMER: 10", 13)[1].substr(6));
        EXPECT_EQ(screen.colorAt(13, 1), sf::Color::Cyan);
        std::string word;
        for (std::size_t row = 32; row < 38; ++row)
            word += rows.at(row).at(21);
        EXPECT_EQ(word, "SUBMIT");
        EXPECT_EQ(rows.at(20).at(39), '+');
    }

    void tap(const char *key) {
        server->pressKey(key);
        server->releaseKey(key);
    }

    std::optional<demo::XHands> hands;
    std::function<void(Stage)> on_sight;

  private:
    bool is_inside = false;
};

TEST_F(GameInWindow, winning_shows_and_plays_everything) {
    configure();
    addArt();
    prepareLog(5);
    std::optional<test::ScreenText> screen;
    std::string shots;
    on_sight = [&](Stage stage) {
        if (!screen)
            return;
        const Lines rows = screen->rows();
        if (stage == Stage::SHOOTING) {
            checkLevel(*screen, rows);
            shots.append(static_cast<std::size_t>(LevelManager::getInstance().getNumber()), 'S');
        } else if (stage != Stage::TITLE) {
            checkText(stage, rows);
        }
    };
    const Lines &story = play(Plan::RIGHT, 3, [&](Stage stage) {
        if (stage == Stage::TITLE && !screen)
            screen.emplace();
        return false;
    });
    EXPECT_EQ(story.back(), "won: YOU WIN!!!");
    EXPECT_EQ(logText().find("Error!"), std::string::npos);
    EXPECT_EQ(soundsIn(logLines()), "+-+" + shots + "-S---") << "three tracks stop at the end";
}

TEST_F(GameInWindow, closing_the_title_sequence_quits) {
    closeAt(Stage::SPLASH);
}

TEST_F(GameInWindow, closing_a_level_quits) {
    closeAt(Stage::SHOOTING);
}

TEST_F(GameInWindow, closing_the_end_quits) {
    closeAt(Stage::LOST);
}

TEST_F(GameInWindow, small_windows_warn_about_the_button) {
    EXPECT_EQ(play(Plan::NO_SHOT, 1).back(), "lost");
    EXPECT_EQ(
        std::ranges::count_if(logLines(),
                              [](const std::string &line) {
                                  return line.starts_with(
                                      "warnIfButtonIsOutside(): Warning! A window of 80 x 24");
                              }),
        1);
}

class Program : public GameInWindow {
  protected:
    /// Returns its exit status; kills it after 50 seconds. Leaks are not looked for here, since a
    /// graphics driver leaves some when it is unloaded; the other cases look for the game's.
    static int run() {
        constexpr char command[] =
            "ASAN_OPTIONS=$ASAN_OPTIONS:detect_leaks=0 timeout 50 '" SELVANE_GAME "'";
        return WEXITSTATUS(std::system(command));
    }
};

TEST_F(Program, q_ends_with_status_0) {
    configure();
    addArt();
    auto status = std::async(std::launch::async, run);
    EXPECT_TRUE(server->enterWindow());
    // The title sequence takes one, the title another.
    while (status.wait_for(std::chrono::milliseconds(50)) != std::future_status::ready)
        tap("q");
    EXPECT_EQ(status.get(), 0);
    EXPECT_NE(logText().find("** Game engine stopped **"), std::string::npos);
}

TEST_F(Program, a_missing_display_ends_with_status_1) {
    configure();
    test::clearEnvironment("DISPLAY");
    EXPECT_EQ(run(), 1);
    EXPECT_NE(logText().find("Error starting GameManager!"), std::string::npos);
}

} // namespace
