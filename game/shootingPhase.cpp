#include "game/shootingPhase.h"

#include "game/Button.h"
#include "game/LevelManager.h"
#include "game/Reticle.h"
#include "game/Shape.h"
#include "game/Timer.h"
#include "game/random.h"
#include "selvane/display/DisplayManager.h"

namespace {

constexpr int spare_targets = 2;
constexpr int decoys_per_target = 3;

/// Somewhere in the window. The row is drawn first.
sv::Vector randomCell() {
    const sv::DisplayManager &display = sv::DisplayManager::getInstance();
    const auto y = static_cast<float>(randomBelow(display.getVertical()));
    const auto x = static_cast<float>(randomBelow(display.getHorizontal()));
    return {x, y};
}

/// With a colour, or nothing for a random one.
template<typename... Color>
Shape *makeShape(ShapeKind kind, Color... color) {
    static_assert(sizeof...(color) <= 1);
    switch (kind) {
    case ShapeKind::SQUARE:
        return new Square(color...);
    case ShapeKind::TRIANGLE:
        return new Triangle(color...);
    case ShapeKind::CIRCLE:
        break;
    }
    return new Circle(color...);
}

/// Two targets may stand in one place: nobody looks.
void show(Shape *p_shape, sv::Vector cell) {
    // It is not seen where this puts it. A seed's game hangs on the two draws.
    placeRandomly(p_shape);
    p_shape->updateSprite();
    p_shape->setPosition(cell);
}

} // namespace

void startShootingPhase() {
    // The button makes a second timer. Both are shown in the same place, count in step and end the
    // game, each with an end screen; nobody sees two.
    new Timer;
    auto *p_button = new Button;
    p_button->setPosition(BUTTON_POSITION);
    (new Reticle)->draw();

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
