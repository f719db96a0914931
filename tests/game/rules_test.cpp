#include "demo/GamePlayer.h"
#include "game/Button.h"
#include "game/GameOver.h"
#include "game/GameStart.h"
#include "game/LevelManager.h"
#include "game/MemoryScreens.h"
#include "game/Reticle.h"
#include "game/Shape.h"
#include "game/random.h"
#include "selvane/core/EventMouse.h"
#include "selvane/input/InputManager.h"
#include "selvane/loop/GameManager.h"
#include "support/EngineTest.h"
#include "support/printing.h"

#include <array>
#include <cstdlib>

namespace {

using demo::inWorld;
using sv::Vector;

class GameRules : public test::EngineTest {
  protected:
    GameRules() {
        writeFile("sv-config.txt", "headless:true,random_seed:7,window_horizontal_chars:100,"
                                   "window_vertical_chars:40,");
        EXPECT_EQ(game.startUp(), 0);
    }

    ~GameRules() override { game.shutDown(); }

    static void act(sv::EventMouseAction action, sv::EventMouseButton button, Vector at) {
        sv::EventMouse event;
        event.setMouseAction(action);
        event.setMouseButton(button);
        event.setMousePosition(at);
        sv::InputManager::getInstance().onEvent(&event);
    }

    static void click(Vector at) { act(sv::CLICKED, sv::LEFT, at); }

    /// From the title to what the keys lead to.
    static void startAndPress(std::initializer_list<sv::Keyboard::Key> keys) {
        new GameStart;
        for (const auto key : keys)
            demo::EventHands().pressKey(key);
    }

    template<typename Made>
    static Made *at(Vector position, Made *p_made) {
        p_made->setPosition(position);
        return p_made;
    }

    sv::GameManager &game = sv::GameManager::getInstance();
    sv::WorldManager &world = sv::WorldManager::getInstance();
    LevelManager &level = LevelManager::getInstance();
};

int draw(int limit) {
    return std::rand() % limit;
}

std::string describe(const char *type, const std::string &color, int x, int y) {
    return std::string(type) + " " + color + " at " + std::to_string(x) + ", " + std::to_string(y);
}

TEST_F(GameRules, a_seed_fixes_what_to_remember_and_where_everything_stands) {
    using sv::Keyboard;
    startAndPress({Keyboard::P, Keyboard::S, Keyboard::H, Keyboard::A, Keyboard::P, Keyboard::E,
                   Keyboard::SPACE});
    std::vector<std::string> seen{std::to_string(level.getNumber())};
    for (const Shape *p_target : inWorld<Shape>())
        seen.push_back(describe(p_target->getType().c_str(), wordOf(p_target->getColor()),
                                static_cast<int>(p_target->getPosition().x),
                                static_cast<int>(p_target->getPosition().y)));

    constexpr std::array kinds{"Circle", "Square", "Triangle"};
    constexpr std::array colors{"red", "blue", "yellow"};
    std::srand(7);
    const auto drawKind = [&] { return kinds.at(static_cast<std::size_t>(draw(3))); };
    const auto drawColor = [&] { return colors.at(static_cast<std::size_t>(draw(3))); };
    const auto drawPlace = [] {
        draw(100);
        draw(36);
    };
    const int number = 2 + draw(2);
    const char *kind = drawKind();
    const char *color = drawColor();
    std::vector<std::string> expected{std::to_string(number)};
    drawPlace(); // The button's.
    for (int i = 0; i < number + 2; ++i) {
        const int y = draw(40);
        const int x = draw(100);
        expected.push_back(describe(kind, color, x, y));
        drawPlace();
        drawPlace();
    }
    for (int i = 0; i < 3 * number; ++i) {
        const int y = draw(40);
        const int x = draw(100);
        const char *its_kind = drawKind();
        drawPlace();
        const char *its_color = drawColor();
        drawPlace();
        expected.push_back(describe(its_kind, its_color, x, y));
    }
    EXPECT_EQ(seen, expected);
}

TEST_F(GameRules, a_target_answers_within_a_cell_and_from_two_columns) {
    const Vector target{30, 12};
    const struct {
        Vector click;
        bool is_hit;
    } cases[] = {
        {{30.5F, 12}, true},      {{31, 13}, true},    {{29, 11}, true},
        {{31.01F, 12.5F}, false}, {{32, 12}, false},   {{30.5F, 13.01F}, false},
        {{30.5F, 10.9F}, false},  {{30, 14}, true},    {{30, 39.5F}, true},
        {{30.01F, 39.5F}, false}, {{12, 39.5F}, true}, {{12.01F, 39.5F}, false},
    };
    for (const auto &c : cases) {
        auto *p_target = at(target, new Circle(ShapeColor::RED));
        click(c.click);
        EXPECT_EQ(!p_target->isActive(), c.is_hit) << c.click.x << ", " << c.click.y;
        world.markForDelete(p_target);
        world.deleteMarked();
    }
}

TEST_F(GameRules, a_shot_scores_once_for_each_target_under_it) {
    // What is to be shot before the first draw.
    ASSERT_EQ(level.getShape(), ShapeKind::CIRCLE);
    ASSERT_EQ(level.getColor(), ShapeColor::RED);
    at({30, 12}, new Circle(ShapeColor::RED));
    at({31, 12}, new Circle(ShapeColor::RED));
    at({30, 13}, new Circle(ShapeColor::BLUE));
    at({31, 13}, new Square(ShapeColor::RED));
    at({29, 13}, new Triangle(ShapeColor::YELLOW));
    at({33, 12}, new Circle(ShapeColor::RED));
    act(sv::MOVED, sv::LEFT, {30.5F, 12.5F});
    act(sv::PRESSED, sv::LEFT, {30.5F, 12.5F});
    act(sv::CLICKED, sv::RIGHT, {30.5F, 12.5F});
    EXPECT_EQ(level.getHits() + level.getMisses(), 0);
    click({30.5F, 12.5F});
    click({30.5F, 12.5F});
    world.update();
    click({30.5F, 12.5F});
    EXPECT_EQ(level.getHits(), 2);
    EXPECT_EQ(level.getMisses(), 2);
    EXPECT_EQ(inWorld<Shape>(true).size(), 2U) << "the two that are too far";
}

TEST_F(GameRules, the_button_answers_in_its_columns_and_not_in_its_own_row) {
    const struct {
        Vector click;
        bool is_on_it;
    } cases[] = {
        {{21, 3}, true},   {{21, 35}, true},       {{21.5F, 3}, true},  {{22, 39}, true},
        {{20, 3}, true},   {{22.01F, 3}, false},   {{19.9F, 3}, false}, {{21.5F, 35}, false},
        {{20, 35}, false}, {{21.5F, 35.1F}, true}, {{35, 3}, true},     {{35.01F, 3}, false},
    };
    for (const auto &c : cases) {
        auto *p_button = at(BUTTON_POSITION, new Button);
        act(sv::PRESSED, sv::LEFT, c.click);
        act(sv::CLICKED, sv::MIDDLE, c.click);
        EXPECT_TRUE(p_button->isActive());
        click(c.click);
        EXPECT_EQ(!p_button->isActive(), c.is_on_it) << c.click.x << ", " << c.click.y;
        world.markForDelete(p_button);
        world.deleteMarked();
    }
}

TEST_F(GameRules, the_click_that_takes_the_verdict_is_gone_with_the_level) {
    using sv::Keyboard;
    startAndPress({Keyboard::P});
    EXPECT_EQ(inWorld<LevelScreen>(true).size(), 1U);
    for (int i = 0; i < level.getNumber(); ++i)
        level.addHit();
    at(BUTTON_POSITION, new Button);
    at({21, 30}, new Circle(level.getColor()));
    at({22, 31}, new Square(level.getColor()));
    click({21.5F, 30.5F});
    click({21.5F, 30.5F});
    EXPECT_EQ(level.getLevel(), 2);
    EXPECT_EQ(level.getHits() + level.getMisses(), 0);
    world.update();
    click({21.5F, 30.5F});
    EXPECT_EQ(level.getLevel(), 2);
    EXPECT_TRUE(inWorld<GameOver>(true).empty());
    EXPECT_EQ(world.getAllObjects().getCount(), 2);
    EXPECT_EQ(inWorld<LevelScreen>().size(), 1U);
    EXPECT_EQ(inWorld<SToContinue>().size(), 1U);
}

TEST_F(GameRules, the_reticle_follows_moves_alone) {
    const auto *p_reticle = new Reticle;
    EXPECT_EQ(p_reticle->getPosition(), (Vector{50, 20}));
    act(sv::MOVED, sv::UNDEFINED_MOUSE_BUTTON, {3.5F, 4.5F});
    EXPECT_EQ(p_reticle->getPosition(), (Vector{3.5F, 4.5F}));
    click({9, 9});
    act(sv::PRESSED, sv::LEFT, {9, 9});
    EXPECT_EQ(p_reticle->getPosition(), (Vector{3.5F, 4.5F}));
}

TEST_F(GameRules, a_random_place_is_right_of_the_world_and_beside_what_is_solid) {
    const auto place = [&](sv::Solidness solidness) {
        auto *p_o = new sv::Object;
        p_o->setSolidness(solidness);
        std::srand(7);
        placeRandomly(p_o);
        return p_o->getPosition();
    };
    std::srand(7);
    const int right = draw(100) + 100;
    const Vector first{static_cast<float>(right) + 3, static_cast<float>(draw(36)) + 4};
    const Vector step{1, 0};
    EXPECT_EQ(place(sv::SPECTRAL), first);
    EXPECT_EQ(place(sv::HARD), first);
    EXPECT_EQ(place(sv::HARD), first + step);
    EXPECT_EQ(place(sv::SPECTRAL), first + step + step);
}

TEST_F(GameRules, a_world_that_is_too_small_for_a_random_place_has_one_all_the_same) {
    for (const float rows : {4.0F, 3.0F, 0.0F}) {
        for (const float columns : {100.0F, 0.0F}) {
            world.setBoundary({{0, 0}, columns, rows});
            auto *p_o = new sv::Object;
            p_o->setSolidness(sv::SPECTRAL);
            placeRandomly(p_o);
            EXPECT_EQ(p_o->getPosition().y, 4) << rows;
            EXPECT_GE(p_o->getPosition().x, columns + 3) << rows;
        }
    }
}

} // namespace
