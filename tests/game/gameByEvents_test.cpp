// Whole games without a window, each in a process of its own: a process plays one game.

#include "demo/GamePlayer.h"
#include "game/Button.h"
#include "game/GameOver.h"
#include "game/LevelManager.h"
#include "game/Reticle.h"
#include "game/Shape.h"
#include "game/Timer.h"
#include "game/playGame.h"
#include "game/resources.h"
#include "selvane/loop/GameManager.h"
#include "selvane/resources/Sprite.h"
#include "support/EngineTest.h"
#include "support/environment.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <regex>

namespace {

using demo::GamePlayer;
using demo::inWorld;
using demo::Plan;
using demo::Stage;
namespace fs = std::filesystem;

constexpr int no_way = 3; // Exit status of a game in which the targets stood in each other's way.
// One pass of this animation: four frames of ten steps, longer than any player looks.
constexpr char game_over_sprite[] =
    "<HEADER>\nframes 4\nwidth 1\nheight 1\nslowdown 10\n</HEADER>\n"
    "<BODY>\na\nend\nb\nend\nc\nend\nd\nend\n</BODY>\n"
    "<FOOTER>\nversion 1\n</FOOTER>\n";
constexpr int game_over_steps = 40;

struct Game {
    Plan plan = Plan::RIGHT;
    int last_level = LAST_LEVEL;
    int seed = 1;
    sv::EventKeyboardAction press = sv::KEY_PRESSED;
};

/// The label of the one picture or sound whose file is broken; "*" if no picture is there.
std::string broken;

bool isBroken(const std::string &label) {
    return broken == "*" || broken == label;
}

std::string withBlanks(std::string text) {
    std::ranges::replace(text, '-', ' ');
    return text;
}

/// What the log says of files that were not loaded, or not wholly.
std::vector<std::string> complaintsIn(const std::vector<std::string> &log) {
    const std::regex complaint("RM::.*(ot|OT) loaded.*|RM::.*Cannot load.*|.* is cut short.*");
    std::vector<std::string> found;
    std::ranges::copy_if(log, std::back_inserter(found), [&](const std::string &line) {
        return std::regex_match(line, complaint);
    });
    return found;
}

bool isScreen(Stage stage) {
    return (stage >= Stage::LEVEL && stage <= Stage::GO) || stage == Stage::WON;
}

/// What is true of every game at this point.
void checkStage(Stage stage) {
    const LevelManager &level = LevelManager::getInstance();
    if (isScreen(stage)) {
        EXPECT_EQ(sv::WorldManager::getInstance().getAllObjects().getCount(), 2)
            << nameOf(stage) << ": a text and its prompt";
    }
    if (stage == Stage::LOST) {
        EXPECT_TRUE(inWorld<Timer>().empty());
        EXPECT_EQ(inWorld<GameOver>().size(), inWorld<Timer>(true).empty() ? 1U : 2U);
    }
    if (stage != Stage::SHOOTING)
        return;
    const auto targets = inWorld<Shape>();
    EXPECT_EQ(targets.size(), static_cast<std::size_t>(4 * level.getNumber() + 2));
    EXPECT_GE(std::ranges::count_if(targets,
                                    [&](const Shape *p_target) {
                                        return p_target->getKind() == level.getShape() &&
                                               p_target->getColor() == level.getColor();
                                    }),
              level.getNumber() + 2);
    for (const Shape *p_target : targets) {
        const sv::Sprite *p_sprite = p_target->getAnimation().getSprite();
        const std::string label = wordOf(p_target->getKind()) + " " + wordOf(p_target->getColor());
        EXPECT_EQ(p_sprite ? p_sprite->getLabel() : "none", isBroken(label) ? "none" : label);
    }
    const auto timers = inWorld<Timer>();
    ASSERT_EQ(timers.size(), 2U);
    EXPECT_EQ(timers[0]->getValue(), timers[1]->getValue());
    ASSERT_EQ(inWorld<Button>().size(), 1U);
    EXPECT_EQ(inWorld<Button>()[0]->getPosition(), (sv::Vector{21, 35}));
    EXPECT_EQ(inWorld<Reticle>().size(), 1U);
}

/// The story of a game that goes as planned.
std::string expectedStory(const Game &game) {
    std::string story = "splash, title, ";
    for (int level = 1; level <= game.last_level; ++level) {
        story += "level: LEVEL  " + std::to_string(level);
        story += ", remember: REMEMBER TO SHOOT\\.\\.\\. , number: [" + std::to_string(2 * level) +
                 std::to_string(2 * level + 1) + "], ";
        story += "color: (red|yellow|blue), shape: (square|triangle|circle)s, go: GO!, shooting, ";
    }
    return story + (game.plan == Plan::RIGHT ? "won: YOU WIN!!!" : "lost");
}

/// A process that is to die tells of its failures itself. 1 if there were any since the first
/// `from` results, which are its parent's.
int tellFailures(int from) {
    const auto *p_result = testing::UnitTest::GetInstance()->current_test_info()->result();
    for (int i = from; i < p_result->total_part_count(); ++i) {
        const testing::TestPartResult &part = p_result->GetTestPartResult(i);
        std::cerr << "line " << part.line_number() << ": " << part.message() << std::endl;
    }
    return p_result->total_part_count() > from ? 1 : 0;
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
        fs::copy(SPRITES, "sprites");
        writeFile("sprites/gameover-spr.txt", game_over_sprite);
    }

    /// The game to its end and what is to be said of it; the player stays.
    static GamePlayer &play(const Game &game, const Tweak &tweak = nullptr) {
        writeFile("sv-config.txt", "headless:true,frame_time:0,window_horizontal_chars:100,"
                                   "window_vertical_chars:40,random_seed:" +
                                       std::to_string(game.seed) + ",");
        prepareLog();
        static demo::EventHands hands(game.press);
        static GamePlayer &player = *new GamePlayer(hands, game.plan, game.last_level);
        // The level begins at any distance from the timer's next tick.
        player.look_steps = 2 + game.seed % 30;
        player.on_sight = checkStage;
        if (tweak)
            tweak(player, hands);
        EXPECT_EQ(playGame(), 0);
        EXPECT_FALSE(player.isStuck()) << join(player.getStory());
        EXPECT_TRUE(logText().ends_with("** Game engine stopped **\n"));
        return player;
    }

    [[noreturn]] static void playAndExit(const Game &game) {
        const auto *p_test = testing::UnitTest::GetInstance()->current_test_info();
        const int results = p_test->result()->total_part_count();
        const GamePlayer &player = play(game);
        const int end = sv::GameManager::getInstance().getStepCount();
        const auto &story = player.getStory();
        const std::string told = join(story);
        const bool is_blocked = told.find("no way") != std::string::npos;
        if (is_blocked) {
            EXPECT_EQ(story.back(), "lost") << told;
        } else {
            EXPECT_TRUE(std::regex_match(told, std::regex(expectedStory(game)))) << told;
        }
        if (fs::exists("whole")) {
            const auto complaints = complaintsIn(logLines());
            EXPECT_EQ(complaints.size(), 1U) << logText();
            EXPECT_NE(withBlanks(complaints.at(0)).find(broken), std::string::npos) << logText();
        }
        const int lost = player.stepOf(Stage::LOST);
        if (lost >= 0) {
            EXPECT_EQ(end - lost, isBroken(labels::GAME_OVER_SPRITE) ? 1 : game_over_steps);
        }
        if (game.plan == Plan::WAIT && !is_blocked) {
            const int steps = lost - player.stepOf(Stage::SHOOTING);
            EXPECT_TRUE(271 <= steps && steps <= 300) << steps;
            EXPECT_EQ(lost % 30, 1) << "seen in the step after the timer's last";
        }
        const int failed = tellFailures(results);
        std::exit(failed != 0 ? failed : is_blocked ? no_way : 0);
    }

    /// With a few seeds, of which one at least lets it go as planned. Always as many: a system
    /// without fork() finds the game that a process is to play by counting them.
    static void playAsPlanned(Game game) {
        int as_planned = 0;
        for (game.seed = 1; game.seed <= 3; ++game.seed)
            as_planned += playElsewhere(game) ? 1 : 0;
        EXPECT_GT(as_planned, 0);
    }

    /// Whether it went as planned; with a failure if it went wrong.
    static bool playElsewhere(const Game &game) {
        bool is_as_planned = false;
        const auto is_fine = [&](int status) {
            is_as_planned = testing::ExitedWithCode(0)(status);
            return is_as_planned || testing::ExitedWithCode(no_way)(status);
        };
        EXPECT_EXIT(playAndExit(game), is_fine, "") << "seed " << game.seed;
        return is_as_planned;
    }
};

class EveryPlan : public GameByEvents, public testing::WithParamInterface<Plan> {};

TEST_P(EveryPlan, ends_as_it_has_to_in_each_level_with_many_seeds) {
    constexpr int seeds = 10;
    int as_planned = 0;
    for (int seed = 1; seed <= seeds; ++seed)
        for (int level = 1; level <= LAST_LEVEL; ++level)
            // Played right it goes on to the end: other seeds instead of other levels.
            as_planned += playElsewhere(GetParam() == Plan::RIGHT
                                            ? Game{Plan::RIGHT, LAST_LEVEL, seeds * level + seed}
                                            : Game{GetParam(), level, seed});
    EXPECT_GE(as_planned, seeds * LAST_LEVEL / 2);
}

INSTANTIATE_TEST_SUITE_P(Plans, EveryPlan,
                         testing::Values(Plan::RIGHT, Plan::WRONG_SHOT, Plan::ONE_FEWER,
                                         Plan::ONE_MORE, Plan::NO_SHOT, Plan::WAIT),
                         [](const auto &plan) { return nameOf(plan.param); });

TEST_F(GameByEvents, held_keys_and_released_ones_count_as_pressed) {
    for (const auto action : {sv::KEY_DOWN, sv::KEY_RELEASED})
        playAsPlanned({.press = action});
}

TEST_F(GameByEvents, goes_to_either_end_without_a_single_sprite) {
    fs::remove_all("sprites");
    broken = "*";
    for (const Plan plan : {Plan::RIGHT, Plan::WRONG_SHOT, Plan::WAIT})
        playAsPlanned({plan});
}

TEST_F(GameByEvents, goes_on_without_a_sprite_whose_file_has_a_key_without_a_value) {
    writeFile("sprites/button-spr.txt", "<HEADER>\nframes\nwidth 1\nheight 1\n</HEADER>\n"
                                        "<BODY>\na\nend\n</BODY>\n"
                                        "<FOOTER>\nversion 1\n</FOOTER>\n");
    EXPECT_EQ(play({Plan::NO_SHOT, 1}).getStory().back(), "lost");
    expectLogged(
        {"RM::loadSprite(): Error! File 'sprites/button-spr.txt', line 2: key 'frames' has "
         "no value."});
}

struct Damage {
    const char *name;
    void (*befall)(const fs::path &file);

    friend void PrintTo(const Damage &damage, std::ostream *out) { *out << damage.name; }
};

class OneFileBroken : public GameByEvents, public testing::WithParamInterface<Damage> {
  protected:
    OneFileBroken() {
        test::setEnvironment("ALSOFT_DRIVERS", "there-is-none");
        fs::copy(SOUNDS, "sounds");
    }

    static std::vector<fs::path> files() {
        std::vector<fs::path> found;
        for (const char *folder : {"sprites", "sounds"})
            for (const auto &entry : fs::directory_iterator(folder))
                found.push_back(entry.path());
        std::ranges::sort(found); // A process of its own has to find them in the same order.
        return found;
    }

    /// "sprites/square-red-spr.txt" holds what is called "square red".
    static std::string labelOf(const fs::path &file) {
        const std::string name = file.stem().string();
        return withBlanks(name.substr(0, name.find("-spr")));
    }
};

TEST_P(OneFileBroken, is_refused_once_and_the_game_goes_to_its_end) {
    ASSERT_EQ(files().size(), 19U);
    for (const fs::path &file : files()) {
        SCOPED_TRACE(file.string());
        fs::rename(file, "whole");
        fs::copy_file("whole", file);
        GetParam().befall(file);
        broken = labelOf(file);
        playElsewhere({broken == labels::LEVEL_UP_SOUND ? Plan::RIGHT : Plan::NO_SHOT});
        fs::remove(file);
        fs::rename("whole", file);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Damages, OneFileBroken,
    testing::Values(Damage{"missing", [](const fs::path &file) { fs::remove(file); }},
                    Damage{"empty", [](const fs::path &file) { fs::resize_file(file, 0); }},
                    Damage{"half",
                           [](const fs::path &file) {
                               fs::resize_file(file, fs::file_size(file) / 2);
                           }},
                    Damage{"a_folder",
                           [](const fs::path &file) {
                               fs::remove(file);
                               fs::create_directory(file);
                           }}),
    [](const auto &damage) { return damage.param.name; });

TEST_F(GameByEvents, each_screen_has_an_ear_for_its_own_key_alone) {
    play({}, [&](GamePlayer &new_player, demo::Hands &hands) {
        new_player.instead = [&](Stage stage) {
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

TEST_F(GameByEvents, a_click_on_the_button_when_the_time_is_up_ends_it_at_once) {
    const GamePlayer &player =
        play({Plan::WAIT, 1}, [](GamePlayer &new_player, demo::Hands &hands) {
            new_player.on_sight = [&](Stage stage) {
                if (stage != Stage::LOST)
                    return;
                hands.moveMouse(GamePlayer::aimAtButton());
                hands.pressButton();
            };
        });
    EXPECT_EQ(sv::GameManager::getInstance().getStepCount(),
              player.stepOf(Stage::LOST) + player.look_steps);
}

} // namespace
