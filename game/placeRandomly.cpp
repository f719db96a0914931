#include "game/placeRandomly.h"

#include "game/randomPick.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"

void placeRandomly(sv::Object *p_object) {
    sv::WorldManager &world = sv::WorldManager::getInstance();
    const sv::Box boundary = world.getBoundary();
    const int width = static_cast<int>(boundary.horizontal);
    const int height = static_cast<int>(boundary.vertical);

    sv::Vector place;
    place.x = static_cast<float>(randomBelow(width) + width) + 3.0F;
    place.y = static_cast<float>(randomBelow(height - 4)) + 4.0F;
    while (!world.getCollisions(p_object, place).isEmpty())
        place.x += 1.0F;
    world.moveObject(p_object, place);
}
