#include "game/Shape.h"

#include "game/LevelManager.h"
#include "game/leftClick.h"
#include "game/random.h"
#include "game/resources.h"
#include "selvane/core/Event.h"
#include "selvane/world/WorldManager.h"

#include <cmath>

namespace {

/// Within a cell on both axes; or anywhere if the click's column is exactly equal to the target's
/// column or to its row. These two cases change scores, so they must stay.
bool isOnTarget(sv::Vector click, sv::Vector target) {
    if (click.x == target.x || click.x == target.y)
        return true;
    return std::abs(click.x - target.x) <= 1.0F && std::abs(click.y - target.y) <= 1.0F;
}

} // namespace

// The place is drawn before the colour: a seed's game depends on that order.
Shape::Shape() : Shape(ShapeColor::RED) {
    color = randomShapeColor();
}

Shape::Shape(ShapeColor new_color) : color(new_color) {
    setType("Shape");
    placeRandomly(this);
    registerInterest(sv::MOUSE_EVENT);
}

void Shape::become(const char *new_type, ShapeKind new_kind, float new_width, float new_height) {
    setType(new_type);
    kind = new_kind;
    width = new_width;
    height = new_height;
}

int Shape::eventHandler(const sv::Event *p_event) {
    if (const auto *click = asLeftClick(p_event))
        hit(click);
    return 0;
}

void Shape::hit(const sv::EventMouse *mouse_event) {
    if (!isOnTarget(mouse_event->getMousePosition(), getPosition()))
        return;
    playSound(labels::SHOOT_SOUND);
    LevelManager &level_manager = LevelManager::getInstance();
    if (color == level_manager.getColor() && kind == level_manager.getShape())
        level_manager.addHit();
    else
        level_manager.addMiss();
    sv::WorldManager::getInstance().retire(this); // Or it would answer one more click.
}

void Shape::updateSprite() {
    setSprite(wordOf(kind) + " " + wordOf(color));
}
