// Whole games in a real window, with keys and a mouse that go through an X server.

#include "demo/GamePlayer.h"
#include "demo/XHands.h"
#include "game/LevelManager.h"
#include "game/playGame.h"
#include "support/ScreenText.h"
#include "support/WindowTest.h"
#include "support/environment.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <utility>

namespace {

using demo::GamePlayer;
using demo::Plan;
using demo::Stage;
using sv::Keyboard;
namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

/// A blank at the text's end counts, and is not seen.
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

    /// With a seed whose first game can be won.
    static void configure() {
        writeFile("sv-config.txt", std::string("frame_time:5,random_seed:1,") +
                                       test::READABLE_WINDOW + "," + test::HIGHER_WINDOW + ",");
    }

    static void addArt() {
        fs::create_directory_symlink(SPRITES, "sprites");
        fs::create_directory_symlink(SOUNDS, "sounds");
    }

    /// Plays a game to its end. A key ends the title sequence.
    const Lines &play(Plan plan, int last_level, const std::function<bool(Stage)> &instead = {}) {
        static GamePlayer &player = *new GamePlayer(*hands, plan, last_level);
        p_player = &player;
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
        EXPECT_TRUE(logText().ends_with("** Game engine stopped **\n"));
        return player.getStory();
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
    GamePlayer *p_player = nullptr;

  private:
    bool is_inside = false;
};

TEST_F(GameInWindow, can_be_won_and_shows_what_it_should_whatever_else_is_typed) {
    configure();
    addArt();
    std::optional<test::ScreenText> screen;
    std::size_t screens = 0;
    on_sight = [&](Stage stage) {
        if (!screen)
            return;
        const LevelManager &level = LevelManager::getInstance();
        const struct {
            Stage stage;
            std::string text;
            std::string prompt;
        } expected[] = {
            {Stage::LEVEL, "LEVEL  " + std::to_string(level.getLevel()), "S TO CONTINUE"},
            {Stage::REMEMBER, "REMEMBER TO SHOOT... ", "H TO CONTINUE"},
            {Stage::NUMBER, std::to_string(level.getNumber()), "A TO CONTINUE"},
            {Stage::COLOR, wordOf(level.getColor()), "P TO CONTINUE"},
            {Stage::SHAPE, wordOf(level.getShape()) + "s", "E TO CONTINUE"},
            {Stage::GO, "GO!", "SPACE TO CONTINUE"},
            {Stage::WON, "YOU WIN!!!", "Q TO QUIT"},
        };
        const Lines rows = screen->rows();
        for (const auto &e : expected) {
            if (e.stage != stage)
                continue;
            EXPECT_EQ(rows.at(19), centred(e.text, 39));
            EXPECT_EQ(Lines(rows.end() - 3, rows.end()), framed("PRESS " + e.prompt, 39));
            EXPECT_EQ(std::ranges::count(rows, ""), 36) << nameOf(stage) << ": nothing else";
            ++screens;
        }
        if (stage == Stage::SHOOTING)
            checkLevel(*screen, rows);
    };
    Stage typed_on = Stage::SPLASH;
    const Lines &story = play(Plan::RIGHT, 3, [&](Stage stage) {
        if (stage == Stage::TITLE && !screen)
            screen.emplace();
        if (stage != Stage::SPLASH && std::exchange(typed_on, stage) != stage)
            for (const char *key : {"b", "F1", "Return", keyOn(stage) == Keyboard::P ? "s" : "p"})
                tap(key);
        return false;
    });
    EXPECT_EQ(story.back(), "won: YOU WIN!!!");
    EXPECT_EQ(screens, 19U);
}

class LossInWindow : public GameInWindow, public testing::WithParamInterface<Plan> {};

TEST_P(LossInWindow, ends_the_game_without_any_picture_and_sound_too) {
    configure();
    const Lines &story = play(GetParam(), 1);
    EXPECT_EQ(story.back(), "lost");
    const int steps = p_player->stepOf(Stage::LOST) - p_player->stepOf(Stage::SHOOTING);
    EXPECT_EQ(271 <= steps && steps <= 300, GetParam() == Plan::WAIT) << steps;
}

INSTANTIATE_TEST_SUITE_P(Plans, LossInWindow,
                         testing::Values(Plan::WRONG_SHOT, Plan::ONE_FEWER, Plan::ONE_MORE,
                                         Plan::NO_SHOT, Plan::WAIT),
                         [](const auto &plan) { return nameOf(plan.param); });

struct Leaving {
    Stage stage;
    bool is_by_key; // Otherwise the window is closed.
    const char *name;

    friend void PrintTo(const Leaving &leaving, std::ostream *out) { *out << leaving.name; }
};

class LeavingInWindow : public GameInWindow, public testing::WithParamInterface<Leaving> {};

TEST_P(LeavingInWindow, ends_the_program) {
    configure();
    const Leaving &leaving = GetParam();
    const bool is_lost = leaving.stage == Stage::LOST;
    const Plan plan = is_lost ? Plan::NO_SHOT : Plan::RIGHT;
    const Lines &story = play(plan, is_lost ? 1 : LAST_LEVEL, [&](Stage stage) {
        if (stage != leaving.stage)
            return false;
        if (leaving.is_by_key)
            tap("q");
        else
            server->closeWindow();
        return true;
    });
    EXPECT_TRUE(story.back().starts_with(nameOf(leaving.stage))) << story.back();
}

INSTANTIATE_TEST_SUITE_P(Ways, LeavingInWindow,
                         testing::Values(Leaving{Stage::SPLASH, false, "closed_at_the_sequence"},
                                         Leaving{Stage::TITLE, false, "closed_on_the_title"},
                                         Leaving{Stage::NUMBER, false, "closed_on_a_screen"},
                                         Leaving{Stage::SHOOTING, false, "closed_in_a_level"},
                                         Leaving{Stage::WON, false, "closed_when_won"},
                                         Leaving{Stage::LOST, false, "closed_when_lost"},
                                         Leaving{Stage::TITLE, true, "q_on_the_title"}),
                         [](const auto &way) { return way.param.name; });

TEST_F(GameInWindow, takes_a_key_that_is_held_for_one_that_is_pressed) {
    configure();
    const Lines &story = play(Plan::NO_SHOT, 1, [&](Stage stage) {
        if (stage == Stage::NUMBER)
            server->pressKey("p");
        if (stage == Stage::SHAPE)
            server->releaseKey("p");
        return stage == Stage::COLOR;
    });
    EXPECT_EQ(story.back(), "lost");
}

TEST_F(GameInWindow, runs_without_a_configuration_and_says_that_the_button_is_not_seen) {
    const Lines &story = play(Plan::NO_SHOT, 1);
    EXPECT_EQ(story.back(), "lost");
    const auto log = logLines();
    EXPECT_EQ(std::ranges::count_if(log,
                                    [](const std::string &line) {
                                        return line.starts_with("warnIfButtonIsOutside(): "
                                                                "Warning! A window of 80 x 24");
                                    }),
              1);
}

class Program : public GameInWindow {
  protected:
    /// Its exit status; ended if it does not end. What a graphics driver leaves behind when it is
    /// unloaded is no leak of the game, whose memory the other cases watch.
    static int run() {
        constexpr char command[] =
            "ASAN_OPTIONS=$ASAN_OPTIONS:detect_leaks=0 timeout 50 '" SELVANE_GAME "'";
        return WEXITSTATUS(std::system(command));
    }
};

TEST_F(Program, ends_with_q_and_status_0) {
    configure();
    addArt();
    auto status = std::async(std::launch::async, run);
    EXPECT_TRUE(server->enterWindow());
    // Once for the title sequence, once for the title.
    while (status.wait_for(std::chrono::milliseconds(50)) != std::future_status::ready)
        tap("q");
    EXPECT_EQ(status.get(), 0);
    EXPECT_NE(logText().find("** Game engine stopped **"), std::string::npos);
}

TEST_F(Program, says_that_it_cannot_start_without_a_display_and_ends_with_status_1) {
    configure();
    test::clearEnvironment("DISPLAY");
    EXPECT_EQ(run(), 1);
    EXPECT_NE(logText().find("Error starting GameManager!"), std::string::npos);
}

} // namespace
