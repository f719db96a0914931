// Whole games without a window, each in a process of its own: a process plays one game.

#include "demo/GamePlayer.h"
#include "game/Button.h"
#include "game/GameOver.h"
#include "game/LevelManager.h"
#include "game/Reticle.h"
#include "game/Shape.h"
#include "game/Timer.h"
#include "game/playGame.h"
#include "selvane/loop/GameManager.h"
#include "selvane/resources/Sprite.h"
#include "support/EngineTest.h"
#include "support/environment.h"
#include "support/soundsIn.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <regex>

namespace {

using demo::GamePlayer;
using demo::inWorld;
using demo::Plan;
using demo::Stage;
namespace fs = std::filesystem;

constexpr int no_way = 3; // Exit status of a game whose targets were in each other's way.
// One pass of this animation: four frames of ten steps, longer than any player looks.
constexpr char game_over_sprite[] =
    "<HEADER>\nframes 4\nwidth 1\nheight 1\nslowdown 10\n</HEADER>\n"
    "<BODY>\na\nend\nb\nend\nc\nend\nd\nend\n</BODY>\n"
    "<FOOTER>\nversion 1\n</FOOTER>\n";
constexpr int game_over_steps = 40;

struct Game {
    Plan plan = Plan::RIGHT;
    int last_level = 1; // The first that may be lost.
    int seed = 1;
    sv::EventKeyboardAction press = sv::KEY_PRESSED;
};

bool has_sprites = true;

bool isScreen(Stage stage) {
    return (stage >= Stage::LEVEL && stage <= Stage::GO) || stage == Stage::WON;
}

void checkShooting() {
    const LevelManager &level = LevelManager::getInstance();
    const auto targets = inWorld<Shape>();
    EXPECT_EQ(targets.size(), static_cast<std::size_t>(4 * level.getNumber() + 2));
    int right = 0;
    for (const Shape *target : targets) {
        right += target->getKind() == level.getShape() && target->getColor() == level.getColor();
        const sv::Sprite *sprite = target->getAnimation().getSprite();
        const std::string label = wordOf(target->getKind()) + " " + wordOf(target->getColor());
        EXPECT_EQ(sprite ? sprite->getLabel() : "none", has_sprites ? label : "none");
    }
    EXPECT_GE(right, level.getNumber() + 2);
    const auto timers = inWorld<Timer>();
    ASSERT_EQ(timers.size(), 2U);
    EXPECT_EQ(timers[0]->getValue(), timers[1]->getValue());
    ASSERT_EQ(inWorld<Button>().size(), 1U);
    EXPECT_EQ(inWorld<Button>()[0]->getPosition(), (sv::Vector{21, 35}));
    EXPECT_EQ(inWorld<Reticle>().size(), 1U);
}

/// What is true of every game in that stage.
void checkStage(Stage stage) {
    if (isScreen(stage)) {
        EXPECT_EQ(sv::WorldManager::getInstance().getAllObjects().getCount(), 2)
            << nameOf(stage) << ": a text and its prompt";
    }
    if (stage == Stage::LOST) {
        EXPECT_TRUE(inWorld<Timer>().empty());
        EXPECT_EQ(inWorld<GameOver>().size(), inWorld<Timer>(true).empty() ? 1U : 2U);
    }
    if (stage == Stage::SHOOTING)
        checkShooting();
}

/// The story of a game that goes as planned, as a regular expression.
std::string expectedStory(const Game &game) {
    std::string story = "splash, title, ";
    const bool is_won = game.plan == Plan::RIGHT;
    for (int level = 1; level <= (is_won ? LAST_LEVEL : game.last_level); ++level) {
        story += "level: LEVEL  " + std::to_string(level);
        story += ", remember: REMEMBER TO SHOOT\\.\\.\\. , number: [" + std::to_string(2 * level) +
                 std::to_string(2 * level + 1) + "], ";
        story += "color: (red|yellow|blue), shape: (square|triangle|circle)s, go: GO!, shooting, ";
    }
    return story + (is_won ? "won: YOU WIN!!!" : "lost");
}

/// Prints the failures from number `from` on, for the parent to show. Returns whether there are
/// any.
bool printFailures(int from) {
    const auto *result = testing::UnitTest::GetInstance()->current_test_info()->result();
    for (int i = from; i < result->total_part_count(); ++i) {
        const testing::TestPartResult &part = result->GetTestPartResult(i);
        std::cerr << "line " << part.line_number() << ": " << part.message() << std::endl;
    }
    return result->total_part_count() > from;
}

std::string join(const std::vector<std::string> &parts) {
    std::string text;
    for (const std::string &part : parts)
        text += (text.empty() ? "" : ", ") + part;
    return text;
}

class GameByEvents : public test::EngineTest {
  protected:
    using Tweak = std::function<void(GamePlayer &, demo::Hands &)>;

    GameByEvents() {
        test::setEnvironment("ALSOFT_DRIVERS", "there-is-none");
        fs::copy(SPRITES, "sprites");
        writeFile("sprites/gameover-spr.txt", game_over_sprite);
    }

    /// Plays the game to its end. The player stays.
    static GamePlayer &play(const Game &game, const Tweak &tweak = nullptr, int log_level = 0) {
        writeFile("sv-config.txt", "headless:true,frame_time:0,window_horizontal_chars:100,"
                                   "window_vertical_chars:40,random_seed:" +
                                       std::to_string(game.seed) + ",");
        prepareLog(log_level);
        static demo::EventHands hands(game.press);
        static GamePlayer &player = *new GamePlayer(hands, game.plan, game.last_level);
        // The level begins at any distance from the timer's next tick.
        player.look_steps = 2 + game.seed % 30;
        player.on_sight = checkStage;
        if (tweak)
            tweak(player, hands);
        EXPECT_EQ(playGame(), 0);
        EXPECT_FALSE(player.isStuck()) << join(player.getStory());
        expectLogged({"** Game engine stopped **"});
        return player;
    }

    /// Plays the game and checks how it went: its end, its steps, and its story.
    static bool playAndCheck(const Game &game) {
        const GamePlayer &player = play(game);
        const std::string story = join(player.getStory());
        const bool is_blocked = story.find("no way") != std::string::npos;
        const std::regex expected(is_blocked ? ".*, lost" : expectedStory(game));
        EXPECT_TRUE(std::regex_match(story, expected)) << story;
        const int lost = player.stepOf(Stage::LOST);
        if (lost >= 0) {
            EXPECT_EQ(sv::GameManager::getInstance().getStepCount() - lost,
                      has_sprites ? game_over_steps : 1);
        }
        if (game.plan == Plan::WAIT && !is_blocked) {
            const int steps = lost - player.stepOf(Stage::SHOOTING);
            EXPECT_TRUE(271 <= steps && steps <= 300) << steps;
            EXPECT_EQ(lost % 30, 1) << "seen in the step after the timer's last";
        }
        return !is_blocked;
    }

    [[noreturn]] static void playAndExit(const Game &game) {
        const auto *test = testing::UnitTest::GetInstance()->current_test_info();
        const int failures = test->result()->total_part_count();
        const bool is_as_planned = playAndCheck(game);
        std::exit(printFailures(failures) ? 1 : is_as_planned ? 0 : no_way);
    }

    /// Plays the game in a process of its own and returns whether it went as planned. If it went
    /// wrong the test fails with the process's exit status and output.
    static bool playElsewhere(const Game &game) {
        bool is_as_planned = false;
        const auto is_fine = [&](int status) {
            is_as_planned = testing::ExitedWithCode(0)(status);
            return is_as_planned || testing::ExitedWithCode(no_way)(status);
        };
        EXPECT_EXIT(playAndExit(game), is_fine, "")
            << nameOf(game.plan) << ", level " << game.last_level << ", seed " << game.seed;
        return is_as_planned;
    }
};

class EveryPlan : public GameByEvents, public testing::WithParamInterface<Plan> {};

TEST_P(EveryPlan, ends_as_it_must_on_each_level) {
    int as_planned = 0;
    for (int seed = 1; seed <= 6; ++seed)
        as_planned += playElsewhere({GetParam(), 1 + seed % LAST_LEVEL, seed});
    EXPECT_GE(as_planned, 3);
}

INSTANTIATE_TEST_SUITE_P(Plans, EveryPlan,
                         testing::Values(Plan::RIGHT, Plan::WRONG_SHOT, Plan::ONE_FEWER,
                                         Plan::ONE_MORE, Plan::NO_SHOT, Plan::WAIT),
                         [](const auto &plan) { return nameOf(plan.param); });

TEST_F(GameByEvents, held_and_released_keys_count_as_pressed) {
    for (const auto action : {sv::KEY_DOWN, sv::KEY_RELEASED})
        EXPECT_TRUE(playElsewhere({Plan::NO_SHOT, 1, 1, action}));
}

TEST_F(GameByEvents, both_ends_need_no_sprites) {
    fs::remove_all("sprites");
    has_sprites = false;
    EXPECT_TRUE(playElsewhere({Plan::WAIT, 1}));
    bool is_won = false;
    // Always as many: a system without fork() finds a process's game by counting them.
    for (int seed = 1; seed <= 3; ++seed)
        is_won = playElsewhere({Plan::RIGHT, 1, seed}) || is_won;
    EXPECT_TRUE(is_won);
}

TEST_F(GameByEvents, a_broken_sprite_file_costs_its_sprite) {
    writeFile("sprites/button-spr.txt", "<HEADER>\nframes\nwidth 1\nheight 1\n</HEADER>\n"
                                        "<BODY>\na\nend\n</BODY>\n"
                                        "<FOOTER>\nversion 1\n</FOOTER>\n");
    EXPECT_EQ(play({Plan::NO_SHOT, 1}).getStory().back(), "lost");
    expectLogged(
        {"RM::loadSprite(): Error! File 'sprites/button-spr.txt', line 2: key 'frames' has "
         "no value."});
}

TEST_F(GameByEvents, screens_ignore_all_other_keys) {
    play({}, [&](GamePlayer &player, demo::Hands &hands) {
        player.instead = [&](Stage stage) {
            if (stage == Stage::SPLASH)
                return false;
            const auto before = sv::WorldManager::getInstance().getAllObjects();
            for (int i = 0; i <= sv::Keyboard::OTHER_KEYS; ++i) {
                const auto key = static_cast<sv::Keyboard::Key>(i);
                if (key == keyOn(stage) || (stage == Stage::TITLE && key == sv::Keyboard::Q))
                    continue;
                hands.pressKey(key);
                hands.releaseKey(key);
            }
            const auto after = sv::WorldManager::getInstance().getAllObjects();
            EXPECT_TRUE(std::ranges::equal(before, after)) << nameOf(stage);
            EXPECT_FALSE(sv::GameManager::getInstance().getGameOver()) << nameOf(stage);
            return false;
        };
    });
}

// Each of the two timers stops the music, plays a sound, and makes a GameOver that plays it again.
// Then the verdict makes a third. The engine stops three tracks when it shuts down.
TEST_F(GameByEvents, clicking_after_the_time_ends_at_once) {
    fs::copy(SOUNDS, "sounds");
    const auto click = [](GamePlayer &player, demo::Hands &hands) {
        player.on_sight = [&](Stage stage) {
            if (stage != Stage::LOST)
                return;
            hands.moveMouse(GamePlayer::aimAtButton());
            hands.pressButton();
        };
    };
    const GamePlayer &player = play({Plan::WAIT, 1}, click, 5);
    EXPECT_EQ(sv::GameManager::getInstance().getStepCount(),
              player.stepOf(Stage::LOST) + player.look_steps);
    EXPECT_EQ(soundsIn(logLines()), "+-+-SS-SS-S---");
}

} // namespace
