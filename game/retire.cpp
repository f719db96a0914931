#include "game/retire.h"

#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"

void retire(sv::Object *p_object) {
    p_object->setActive(false);
    sv::WorldManager::getInstance().markForDelete(p_object);
}

void retire(const sv::ObjectList &objects) {
    for (sv::Object *p_object : objects)
        retire(p_object);
}
