// Whole games without a window, one after another in this process.

#include "demo/GamePlayer.h"
#include "game/Button.h"
#include "game/GameOver.h"
#include "game/LevelManager.h"
#include "game/Shape.h"
#include "game/Timer.h"
#include "game/playGame.h"
#include "selvane/core/Config.h"
#include "selvane/loop/GameManager.h"
#include "selvane/record/Recorder.h"
#include "selvane/record/Replayer.h"
#include "selvane/resources/Sprite.h"
#include "selvane/testing/Session.h"
#include "support/EngineTest.h"
#include "support/environment.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>

namespace {

using demo::GamePlayer;
using demo::inWorld;
using demo::Plan;
using demo::Stage;

constexpr int game_over_steps = 100; // One pass of its animation, longer than any player looks.

struct Setup {
    Plan plan = Plan::RIGHT;
    int last_level = 1; // The first that may be lost.
    int seed = 1;
    std::string folder = GAME_FOLDER;
};

class SessionHands : public demo::Hands {
  public:
    explicit SessionHands(sv::Session &new_session) : session(new_session) {}

    void pressKey(sv::Keyboard::Key key) override { session.pressKey(key); }
    void releaseKey(sv::Keyboard::Key key) override { session.releaseKey(key); }
    void moveMouse(sv::Vector to) override { session.moveMouse(to); }
    void pressButton() override { session.pressButton(); }
    void releaseButton() override { session.releaseButton(); }

  private:
    sv::Session &session;
};

std::string centred(const std::string &text) {
    return std::string(50 - text.size() / 2, ' ') + text + "\n";
}

/// All that is on the screen while a text and its prompt are shown.
std::string pageOf(Stage stage) {
    const LevelManager &level = LevelManager::getInstance();
    const std::map<Stage, std::pair<std::string, std::string>> pages = {
        {Stage::LEVEL, {"LEVEL  " + std::to_string(level.getLevel()), "S TO CONTINUE"}},
        {Stage::REMEMBER, {"REMEMBER TO SHOOT...", "H TO CONTINUE"}},
        {Stage::NUMBER, {std::to_string(level.getNumber()), "A TO CONTINUE"}},
        {Stage::COLOR, {wordOf(level.getColor()), "P TO CONTINUE"}},
        {Stage::SHAPE, {wordOf(level.getShape()) + "s", "E TO CONTINUE"}},
        {Stage::GO, {"GO!", "SPACE TO CONTINUE"}},
        {Stage::WON, {"YOU WIN!!!", "Q TO QUIT"}},
    };
    const auto &[text, prompt] = pages.at(stage);
    const std::string inside = "| PRESS " + prompt + " |";
    const std::string rule = centred(std::string(inside.size() - 2, '-'));
    return std::string(19, '\n') + centred(text) + std::string(17, '\n') + rule + centred(inside) +
           rule;
}

/// The rows of a screen, none of them cut.
std::vector<std::string> cells(const std::string &screen) {
    std::istringstream text(screen);
    std::vector<std::string> rows(40);
    for (std::string &row : rows) {
        std::getline(text, row);
        row.resize(100, ' ');
    }
    return rows;
}

/// One game, from the title sequence to its end.
struct Game {
    explicit Game(const Setup &new_setup)
        : setup(new_setup), session([] { return playGame(); },
                                    {.seed = setup.seed, .folder = setup.folder, .log_level = 5}) {
        // The level begins at any distance from the timer's next tick.
        player.look_steps = 2 + setup.seed % 30;
        player.on_action = [this](const std::string &what) { shots += what == "aims" ? "S" : ""; };
        player.on_sight = [this](Stage stage) {
            SCOPED_TRACE(describe());
            checkStage(stage);
        };
    }

    std::string describe() const {
        return std::string(nameOf(setup.plan)) + ", level " + std::to_string(setup.last_level) +
               ", seed " + std::to_string(setup.seed) + "\n" + session.screen();
    }

    /// Plays it to its end.
    void play() {
        while (session.play())
            player.step();
        SCOPED_TRACE(describe());
        EXPECT_EQ(session.exitStatus(), 0);
        EXPECT_FALSE(player.isStuck());
        EXPECT_NE(session.log().find("** Game engine stopped **"), std::string::npos);
        EXPECT_EQ(session.log().find("Error!") == std::string::npos, hasArt());
    }

    /// Plays it and checks how it went: its end, its steps, and its story. Whether it went as
    /// planned: targets may be in each other's way.
    bool playAndCheck() {
        play();
        SCOPED_TRACE(describe());
        if (story().find("no way") != std::string::npos) {
            EXPECT_TRUE(story().ends_with("lost, ")) << story();
            return false;
        }
        EXPECT_EQ(story(), expectedStory());
        if (setup.plan == Plan::RIGHT) {
            EXPECT_EQ(sounds(), hasArt() ? "+-+" + shots + "-S---" : "") << "three tracks stop";
            return true;
        }
        const int lost = player.stepOf(Stage::LOST);
        const int steps_at_the_end = sv::GameManager::getInstance().getStepCount() - lost;
        const bool is_late = setup.plan == Plan::WAIT; // Seen before its first step, not in it.
        EXPECT_EQ(steps_at_the_end, (hasArt() ? game_over_steps : 1) + (is_late ? 1 : 0));
        if (is_late) {
            const int steps = lost - player.stepOf(Stage::SHOOTING);
            EXPECT_TRUE(270 < steps && steps <= 300 && lost % 30 == 0) << steps << ", " << lost;
        }
        return true;
    }

    /// The stages so far.
    std::string story() const {
        std::string names;
        for (const std::string &each : player.getStory())
            names += each.substr(0, each.find(':')) + ", ";
        return names;
    }

    /// Music that starts and stops as + and -, and sounds as S, in order.
    std::string sounds() const {
        std::istringstream log(session.log());
        std::string sounds;
        for (std::string line; std::getline(log, line);) {
            sounds += line.starts_with("Music::play()") ? "+" : "";
            sounds += line.starts_with("Music::stop()") ? "-" : "";
            sounds += line.starts_with("Sound::play()") ? "S" : "";
        }
        return sounds;
    }

    Setup setup;
    sv::Session session;
    SessionHands hands{session};
    GamePlayer player{hands, setup.plan, setup.last_level};

  private:
    std::string shots; // Of the whole game, an S for each.

    bool hasArt() const { return setup.folder == GAME_FOLDER; }

    std::string expectedStory() const {
        const bool is_won = setup.plan == Plan::RIGHT;
        std::string story = "splash, title, ";
        for (int level = 1; level <= (is_won ? LAST_LEVEL : setup.last_level); ++level)
            story += "level, remember, number, color, shape, go, shooting, ";
        return story + (is_won ? "won, " : "lost, ");
    }

    /// What is true of every game in that stage.
    void checkStage(Stage stage) const {
        if (stage == Stage::SHOOTING) {
            checkShooting();
        } else if (stage == Stage::LOST) {
            EXPECT_TRUE(inWorld<Timer>().empty());
            EXPECT_EQ(inWorld<GameOver>().size(), inWorld<Timer>(true).empty() ? 1U : 2U);
        } else if (stage > Stage::TITLE) {
            EXPECT_EQ(session.screen() + "\n", pageOf(stage));
        }
    }

    void checkShooting() const {
        const LevelManager &level = LevelManager::getInstance();
        EXPECT_EQ(level.getNumber() / 2, level.getLevel());
        const auto targets = inWorld<Shape>();
        EXPECT_EQ(targets.size(), static_cast<std::size_t>(4 * level.getNumber() + 2));
        int right = 0;
        for (const Shape *target : targets) {
            right +=
                target->getKind() == level.getShape() && target->getColor() == level.getColor();
            const sv::Sprite *sprite = target->getAnimation().getSprite();
            const std::string label = wordOf(target->getKind()) + " " + wordOf(target->getColor());
            EXPECT_EQ(sprite ? sprite->getLabel() : "none", hasArt() ? label : "none");
        }
        EXPECT_GE(right, level.getNumber() + 2);
        const auto timers = inWorld<Timer>();
        ASSERT_EQ(timers.size(), 2U);
        EXPECT_EQ(timers[0]->getValue(), timers[1]->getValue());
        checkLevelScreen();
    }

    /// Timer, button and reticle. No target covers them.
    void checkLevelScreen() const {
        const auto rows = cells(session.screen());
        EXPECT_EQ(rows[1].substr(11, 9), "| TIMER: ");
        EXPECT_EQ(cells(session.colors())[1][13], 'c');
        std::string word;
        for (std::size_t row = 32; row < 38; ++row)
            word += rows[row][21];
        EXPECT_EQ(word, hasArt() ? "SUBMIT" : "      ");
        EXPECT_EQ(rows[20][50], '+');
    }
};

struct GameInSession : test::EngineTest {
    GameInSession() {
        test::setEnvironment(sv::CONFIG_FILE_VARIABLE, GAME_FOLDER "/game/sv-config.txt");
    }
};

TEST_F(GameInSession, every_plan_ends_as_it_must) {
    for (const Plan plan : {Plan::RIGHT, Plan::WRONG_SHOT, Plan::ONE_FEWER, Plan::ONE_MORE,
                            Plan::NO_SHOT, Plan::WAIT}) {
        int as_planned = 0;
        for (int seed = 1; seed <= 6; ++seed)
            as_planned += Game({plan, 1 + seed % LAST_LEVEL, seed}).playAndCheck();
        EXPECT_GE(as_planned, 3) << nameOf(plan);
    }
}

TEST_F(GameInSession, records_play_again_the_same) {
    LevelManager::getInstance(); // A process's first asks for the time.
    for (int seed = 1; seed <= 10; ++seed) {
        ASSERT_EQ(sv::Recorder::getInstance().start("record"), 0);
        const Plan plan = seed % 2 == 0 ? Plan::WAIT : Plan::RIGHT;
        Game({plan, 1, seed}).playAndCheck();
        sv::ReplayVerdict verdict{.is_same = false};
        ASSERT_EQ(sv::Replayer::getInstance().start(
                      "record", {.at_end = [&](const auto &end) { verdict = end; }}),
                  0);
        sv::Session session(playGame, {.folder = GAME_FOLDER});
        while (verdict.text.empty() && session.play()) {
        }
        session.end();
        EXPECT_TRUE(verdict.is_same) << verdict.text << ", seed " << seed;
        EXPECT_GT(verdict.steps, 100);
    }
}

// Each of the two timers stops the music, plays a sound, and makes a GameOver that plays it again.
// Then the verdict makes a third. The engine stops three tracks when it shuts down.
TEST_F(GameInSession, clicking_after_the_time_ends_at_once) {
    Game game({Plan::WAIT});
    game.player.on_sight = [&](Stage stage) {
        if (stage == Stage::LOST)
            game.session.click(GamePlayer::aimAtButton());
    };
    game.play();
    EXPECT_EQ(sv::GameManager::getInstance().getStepCount(),
              game.player.stepOf(Stage::LOST) + game.player.look_steps);
    EXPECT_EQ(game.sounds(), "+-+-SS-SS-S---");
}

TEST_F(GameInSession, both_ends_need_no_files) {
    std::filesystem::create_directory("sprites");
    writeFile("sprites/button-spr.txt", "<HEADER>\nframes\n</HEADER>\n");
    Game lost({Plan::WAIT, 1, 1, "."});
    EXPECT_TRUE(lost.playAndCheck());
    for (const std::string line :
         {"RM::loadSprite(): Error! File 'sprites/button-spr.txt', line 2: key 'frames' has no "
          "value.",
          "RM::loadSprite(): Error! Cannot open file 'sprites/gameover-spr.txt'.",
          "RM::loadSound(): Error! Cannot load sound from file 'sounds/shoot.wav'."})
        EXPECT_NE(lost.session.log().find(line + "\n"), std::string::npos) << line;
    lost.session.end();
    bool is_won = false;
    for (int seed = 1; seed <= 3; ++seed)
        is_won |= Game({Plan::RIGHT, 1, seed, "."}).playAndCheck();
    EXPECT_TRUE(is_won);
}

TEST_F(GameInSession, closing_the_window_quits_at_any_time) {
    for (const Stage last : {Stage::SPLASH, Stage::TITLE, Stage::SHOOTING, Stage::LOST}) {
        Game game({Plan::NO_SHOT});
        game.player.on_sight = [&](Stage stage) {
            if (stage == last)
                game.session.closeWindow();
        };
        game.play();
        EXPECT_EQ(game.player.getStory().back(), nameOf(last));
        EXPECT_EQ(sv::GameManager::getInstance().getStepCount(),
                  game.player.stepOf(last) + game.player.look_steps);
    }
}

TEST_F(GameInSession, small_windows_warn_about_the_button) {
    for (const auto &[columns, rows, is_warned] :
         {std::tuple{22, 40, true}, {23, 39, true}, {23, 40, false}}) {
        sv::Session session(playGame, {.columns = columns, .rows = rows, .folder = GAME_FOLDER});
        session.play(100);
        const std::string size = std::to_string(columns) + " x " + std::to_string(rows);
        EXPECT_EQ(session.log().find("Warning! A window of " + size + " cells does not show all") !=
                      std::string::npos,
                  is_warned)
            << size;
    }
}

} // namespace
