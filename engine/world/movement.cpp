// How the world manager moves an object: whom it meets, who is told, and when it stays.

#include "core/LogManager.h"
#include "world/EventCollision.h"
#include "world/EventOut.h"
#include "world/Object.h"
#include "world/WorldManager.h"
#include "world/geometry.h"

#include <algorithm>
#include <cmath>

namespace sv {

namespace {

Object *firstHard(const ObjectList &list) {
    const auto found = std::find_if(list.begin(), list.end(),
                                    [](const Object *p_o) { return p_o->getSolidness() == HARD; });
    return found == list.end() ? nullptr : *found;
}

/// Where a mover gets in one step along the face that it touches: a face above or below leaves the
/// horizontal part of its way, one beside it the vertical part; at a corner it turns back in x.
Vector slidPosition(const Object *p_o, Vector normal) {
    const float across = std::fabs(normal.x);
    const float along = std::fabs(normal.y);
    Vector way{p_o->getDirection().x * along, p_o->getDirection().y * across};
    if (across == 1 && along == 1)
        way.x = -way.x;
    return p_o->getPosition() + normalized(way) * p_o->getSpeed();
}

bool stops(const Object *p_mover, const Object *p_other) {
    if (p_mover->getSolidness() == HARD && p_other->getSolidness() == HARD)
        return true;
    return p_mover->getNoSoft() && p_other->getSolidness() == SOFT;
}

/// Tells both sides of each collision, also after one has stopped the mover; false if one did.
bool collide(Object *p_o, const ObjectList &list, Vector where) {
    bool do_move = true;
    for (Object *p_other : list) {
        const EventCollision collision(p_o, p_other, where);
        p_o->eventHandler(&collision);
        p_other->eventHandler(&collision);
        if (stops(p_o, p_other))
            do_move = false;
    }
    return do_move;
}

} // namespace

/// False if the object stays where it is; otherwise `where` is where it comes to stand.
bool WorldManager::resolveCollisions(Object *p_o, Vector &where) const {
    if (!p_o->isSolid())
        return true;
    ObjectList list = getCollisions(p_o, where);
    if (p_o->getSolidness() == HARD && p_o->getAvoidCollisions()) {
        if (const Object *p_obstacle = firstHard(list)) {
            where = slidPosition(p_o, getNormal(p_o, p_obstacle));
            list = getCollisions(p_o, where);
            if (firstHard(list)) {
                LogManager::getInstance().writeLog(
                    5, "WorldManager::moveObject(): Double collision. Object (avoid obstacles) "
                       "cannot move.");
                return false;
            }
        }
    }
    return collide(p_o, list, where);
}

int WorldManager::moveObject(Object *p_o, Vector where) {
    if (!resolveCollisions(p_o, where))
        return -1;

    const Box before = getWorldBox(p_o);
    p_o->setPosition(where);
    const Box after = getWorldBox(p_o);
    if (boxIntersectsBox(before, boundary) && !boxIntersectsBox(after, boundary)) {
        const EventOut out;
        p_o->eventHandler(&out);
    }
    if (p_o == view_following)
        setViewPosition(followedCentre(view, view_slack, p_o->getPosition()));
    return 0;
}

} // namespace sv
