#include "demo/GamePlayer.h"

#include "game/Button.h"
#include "game/GameOver.h"
#include "game/GameStart.h"
#include "game/LevelManager.h"
#include "game/MemoryScreens.h"
#include "game/Reticle.h"
#include "game/Shape.h"
#include "game/WinScreen.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/splash/Splash.h"
#include "selvane/world/WorldManager.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace demo {

namespace {

constexpr int patience = 2000; // Steps.

/// The active object of that class, or null.
template<typename Wanted>
Wanted *find() {
    const auto found = inWorld<Wanted>();
    return found.empty() ? nullptr : found.front();
}

struct Sight {
    Stage stage = Stage::NOTHING;
    const sv::ViewObject *screen = nullptr;
};

Sight look() {
    // The first one found: at the end of a game the level's objects are still there.
    const Sight sights[] = {
        {Stage::LOST, find<GameOver>()},     {Stage::WON, find<WinScreen>()},
        {Stage::TITLE, find<GameStart>()},   {Stage::LEVEL, find<LevelScreen>()},
        {Stage::NUMBER, find<NumScreen>()},  {Stage::REMEMBER, find<RememberScreen>()},
        {Stage::COLOR, find<ColorScreen>()}, {Stage::SHAPE, find<ShapeScreen>()},
        {Stage::GO, find<GoScreen>()},
    };
    for (const Sight &sight : sights)
        if (sight.screen)
            return sight;
    if (find<Button>())
        return {Stage::SHOOTING, nullptr};
    if (find<sv::Splash>())
        return {Stage::SPLASH, nullptr};
    return {};
}

std::string describe(const Sight &sight) {
    std::string text = nameOf(sight.stage);
    if (!sight.screen || sight.screen->getViewString().empty())
        return text;
    text.append(": ").append(sight.screen->getViewString());
    if (sight.screen->getDrawValue())
        text.append(" ").append(std::to_string(sight.screen->getValue()));
    return text;
}

bool isRight(const Shape *shape) {
    const LevelManager &level = LevelManager::getInstance();
    return shape->getColor() == level.getColor() && shape->getKind() == level.getShape();
}

bool isOnTarget(sv::Vector click, sv::Vector target) {
    return click.x == target.x || click.x == target.y ||
           (std::abs(click.x - target.x) <= 1 && std::abs(click.y - target.y) <= 1);
}

bool isSafeFromButton(sv::Vector click) {
    return std::abs(click.x - BUTTON_POSITION.x) > 1.5F && click.x != BUTTON_POSITION.y;
}

/// Clicks that can hit a target: the pixels around its middle, inside the window.
std::vector<sv::Vector> clicksAround(sv::Vector target) {
    const sv::DisplayManager &display = sv::DisplayManager::getInstance();
    std::vector<sv::Vector> clicks;
    for (const float dy : {0.0F, 0.4F, -0.4F, 0.9F, -0.9F}) {
        for (const float dx : {0.05F, 0.4F, -0.4F, 0.9F, -0.9F}) {
            const sv::Vector pixel = sv::spacesToPixels(target + sv::Vector{dx, dy});
            const sv::Vector whole{std::round(pixel.x), std::round(pixel.y)};
            const sv::Vector click = sv::pixelsToSpaces(whole);
            const bool is_inside = whole.x >= 0 && whole.y >= 0 &&
                                   click.x < static_cast<float>(display.getHorizontal()) &&
                                   click.y < static_cast<float>(display.getVertical());
            if (is_inside && isSafeFromButton(click))
                clicks.push_back(click);
        }
    }
    return clicks;
}

/// Finds clicks that hit exactly `count` of the right targets in `left` and nothing else.
bool aim(std::vector<Shape *> left, int count, std::vector<sv::Vector> &clicks) {
    if (count == 0)
        return true;
    for (const Shape *shape : left) {
        if (!isRight(shape))
            continue;
        for (const sv::Vector click : clicksAround(shape->getPosition())) {
            std::vector<Shape *> hit;
            std::ranges::copy_if(left, std::back_inserter(hit), [&](const Shape *each) {
                return isOnTarget(click, each->getPosition());
            });
            const auto taken = static_cast<int>(hit.size());
            if (taken == 0 || taken > count || !std::ranges::all_of(hit, isRight))
                continue;
            std::vector<Shape *> rest = left;
            std::erase_if(
                rest, [&](const Shape *each) { return std::ranges::find(hit, each) != hit.end(); });
            clicks.push_back(click);
            if (aim(rest, count - taken, clicks))
                return true;
            clicks.pop_back();
            break; // Other clicks on this target hit the same ones, or more.
        }
    }
    return false;
}

} // namespace

const char *nameOf(Stage stage) {
    constexpr const char *names[] = {"nothing", "splash", "title", "level",    "remember", "number",
                                     "color",   "shape",  "go",    "shooting", "won",      "lost"};
    return names[static_cast<int>(stage)];
}

const char *nameOf(Plan plan) {
    constexpr const char *names[] = {"right",    "wrong_shot", "one_fewer",
                                     "one_more", "no_shot",    "wait"};
    return names[static_cast<int>(plan)];
}

std::optional<sv::Keyboard::Key> keyOn(Stage stage) {
    using sv::Keyboard;
    const std::map<Stage, Keyboard::Key> keys = {
        {Stage::TITLE, Keyboard::P},  {Stage::LEVEL, Keyboard::S}, {Stage::REMEMBER, Keyboard::H},
        {Stage::NUMBER, Keyboard::A}, {Stage::COLOR, Keyboard::P}, {Stage::SHAPE, Keyboard::E},
        {Stage::GO, Keyboard::SPACE}, {Stage::WON, Keyboard::Q},
    };
    const auto found = keys.find(stage);
    return found == keys.end() ? std::nullopt : std::optional(found->second);
}

GamePlayer::GamePlayer(Hands &new_hands, Plan new_plan, int new_last_level)
    : hands(new_hands), plan(new_plan), last_level(new_last_level) {}

void GamePlayer::step() {
    const Sight sight = look();
    if (sight.stage != seen) {
        release();
        seen = sight.stage;
        steps[seen] = sv::GameManager::getInstance().getStepCount();
        steps_seen = 0;
        is_planned = false;
        story.push_back(describe(sight));
    }
    ++steps_seen;
    if (steps_seen > patience) {
        is_stuck = true;
        sv::GameManager::getInstance().setGameOver();
    }
    if (steps_seen < look_steps)
        return;
    if (steps_seen == look_steps && on_sight)
        on_sight(seen);
    if (!instead || !instead(seen))
        act(seen);
}

void GamePlayer::act(Stage stage) {
    if (const auto key = keyOn(stage))
        return press(*key);
    if (stage != Stage::SHOOTING)
        return;
    if (!std::exchange(is_planned, true))
        planShots();
    shoot();
}

void GamePlayer::press(sv::Keyboard::Key key) {
    if (held)
        return;
    held = key;
    report(key == sv::Keyboard::SPACE
               ? "presses the space bar"
               : std::string("presses ") + static_cast<char>('A' + key - sv::Keyboard::A));
    hands.pressKey(key);
}

void GamePlayer::release() {
    if (held)
        hands.releaseKey(*held);
    held.reset();
    if (aim == Aim::PRESSED)
        hands.releaseButton();
    aim = Aim::MOVE;
}

void GamePlayer::report(const std::string &what) const {
    if (on_action)
        on_action(what);
}

int GamePlayer::stepOf(Stage stage) const {
    const auto found = steps.find(stage);
    return found == steps.end() ? -1 : found->second;
}

sv::Vector GamePlayer::aimAtButton() {
    // Not in its exact middle, where it does not answer.
    const auto last_row = static_cast<float>(sv::DisplayManager::getInstance().getVertical() - 1);
    const sv::Vector place{BUTTON_POSITION.x, std::min(BUTTON_POSITION.y, last_row)};
    const sv::Vector pixel = sv::spacesToPixels(place + sv::Vector{0.3F, 0.4F});
    return sv::pixelsToSpaces({std::round(pixel.x), std::round(pixel.y)});
}

std::optional<std::vector<sv::Vector>> GamePlayer::aimAtRight(int count) {
    std::vector<sv::Vector> found;
    if (!demo::aim(inWorld<Shape>(), count, found))
        return std::nullopt;
    return found;
}

std::optional<sv::Vector> GamePlayer::aimAtWrong() {
    for (const Shape *shape : inWorld<Shape>()) {
        if (isRight(shape))
            continue;
        for (const sv::Vector click : clicksAround(shape->getPosition()))
            return click;
    }
    return std::nullopt;
}

void GamePlayer::planShots() {
    const LevelManager &level = LevelManager::getInstance();
    const bool is_last = level.getLevel() == last_level;
    const Plan now = is_last ? plan : Plan::RIGHT;
    clicks.clear();
    if (now == Plan::WAIT)
        return;
    int count = level.getNumber();
    if (now == Plan::ONE_FEWER)
        --count;
    if (now == Plan::ONE_MORE)
        ++count;
    if (now == Plan::NO_SHOT)
        count = 0;
    if (const auto right = aimAtRight(count))
        clicks.assign(right->rbegin(), right->rend()); // The next one last.
    else
        story.emplace_back("no way to hit " + std::to_string(count));
    if (const auto wrong = aimAtWrong(); wrong && now == Plan::WRONG_SHOT)
        clicks.insert(clicks.begin(), *wrong);
    clicks.insert(clicks.begin(), aimAtButton());
    aim = Aim::MOVE;
}

/// Aims, waits for the reticle to arrive, presses the button, and waits for the target to go.
void GamePlayer::shoot() {
    if (clicks.empty())
        return;
    const Reticle *reticle = find<Reticle>();
    switch (aim) {
    case Aim::MOVE:
        report(clicks.size() == 1 ? "submits" : "aims");
        hands.moveMouse(clicks.back());
        aim = Aim::AIM;
        aim_started = steps_seen;
        return;
    case Aim::AIM: {
        if (!reticle || steps_seen < aim_started + aim_steps)
            return;
        const sv::Vector off = reticle->getPosition() - clicks.back();
        if (std::abs(off.x) > 0.01F || std::abs(off.y) > 0.01F)
            return;
        targets_before = inWorld<Shape>().size();
        aim = Aim::PRESSED;
        hands.pressButton();
        return;
    }
    case Aim::PRESSED:
        if (inWorld<Shape>().size() == targets_before)
            return;
        hands.releaseButton();
        clicks.pop_back();
        aim = Aim::MOVE;
        return;
    }
}

} // namespace demo
