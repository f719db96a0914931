#include "game/shootingPhase.h"

#include "game/Button.h"
#include "game/LevelManager.h"
#include "game/Reticle.h"
#include "game/Shape.h"
#include "game/Timer.h"
#include "game/random.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/world/spawn.h"

namespace {

constexpr int spare_targets = 2;
constexpr int decoys_per_target = 3;

/// A random cell of the window. The row is drawn first.
sv::Vector randomCell() {
    const sv::DisplayManager &display = sv::DisplayManager::getInstance();
    const auto y = static_cast<float>(randomBelow(display.getVertical()));
    const auto x = static_cast<float>(randomBelow(display.getHorizontal()));
    return {x, y};
}

/// Without a colour argument the colour is random.
template<typename... Color>
Shape *makeShape(ShapeKind kind, Color... color) {
    static_assert(sizeof...(color) <= 1);
    switch (kind) {
    case ShapeKind::SQUARE:
        return sv::spawn<Square>(color...);
    case ShapeKind::TRIANGLE:
        return sv::spawn<Triangle>(color...);
    case ShapeKind::CIRCLE:
        break;
    }
    return sv::spawn<Circle>(color...);
}

/// Targets may overlap: nothing checks for that.
void show(Shape *shape, sv::Vector cell) {
    // Overwritten below, but its two random draws are part of a seed's game.
    placeRandomly(shape);
    shape->updateSprite();
    shape->setPosition(cell);
}

} // namespace

void startShootingPhase() {
    // The button makes a second timer. Both show in the same place, count in step, and each makes
    // its own GameOver; the player sees one.
    sv::spawn<Timer>();
    auto *button = sv::spawn<Button>();
    button->setPosition(BUTTON_POSITION);
    sv::spawn<Reticle>()->draw();

    const LevelManager &level_manager = LevelManager::getInstance();
    for (int i = 0; i < level_manager.getNumber() + spare_targets; ++i) {
        const sv::Vector cell = randomCell();
        show(makeShape(level_manager.getShape(), level_manager.getColor()), cell);
    }
    for (int i = 0; i < decoys_per_target * level_manager.getNumber(); ++i) {
        const sv::Vector cell = randomCell();
        show(makeShape(randomShapeKind()), cell);
    }
}
