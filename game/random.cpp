#include "game/random.h"

#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"

#include <algorithm>
#include <array>
#include <cstdlib>

int randomBelow(int limit) {
    return std::rand() % std::max(limit, 1);
}

// The orders below differ from those of the enumerations. They decide which game a seed gives, so
// they must not change.

ShapeKind randomShapeKind() {
    constexpr std::array order{ShapeKind::CIRCLE, ShapeKind::SQUARE, ShapeKind::TRIANGLE};
    return order.at(static_cast<std::size_t>(randomBelow(static_cast<int>(order.size()))));
}

ShapeColor randomShapeColor() {
    constexpr std::array order{ShapeColor::RED, ShapeColor::BLUE, ShapeColor::YELLOW};
    return order.at(static_cast<std::size_t>(randomBelow(static_cast<int>(order.size()))));
}

void placeRandomly(sv::Object *object) {
    sv::WorldManager &world = sv::WorldManager::getInstance();
    const sv::Box boundary = world.getBoundary();
    const int width = static_cast<int>(boundary.horizontal);
    const int height = static_cast<int>(boundary.vertical);

    sv::Vector place;
    place.x = static_cast<float>(randomBelow(width) + width) + 3.0F;
    place.y = static_cast<float>(randomBelow(height - 4)) + 4.0F;
    while (!world.getCollisions(object, place).isEmpty())
        place.x += 1.0F;
    world.moveObject(object, place);
}
