// How the world manager moves an object: collisions, their events, and refused moves.

#include "selvane/core/EventCollision.h"
#include "selvane/core/EventOut.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/NestingLimit.h"
#include "selvane/core/ObjectWatch.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/geometry.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace sv {

namespace {

NestingLimit nested_moves;

Object *firstHard(const ObjectList &list) {
    const auto found = std::find_if(list.begin(), list.end(),
                                    [](const Object *p_o) { return p_o->getSolidness() == HARD; });
    return found == list.end() ? nullptr : *found;
}

/// The mover's position after one step along the face that it touches: a face above or below leaves
/// the horizontal part of its motion, a face beside it the vertical part; at a corner x is
/// reversed.
Vector slidPosition(const Object *p_o, Vector normal) {
    const float across = std::fabs(normal.x);
    const float along = std::fabs(normal.y);
    Vector way{p_o->getDirection().x * along, p_o->getDirection().y * across};
    if (across == 1 && along == 1)
        way.x = -way.x;
    return p_o->getPosition() + normalized(way) * p_o->getSpeed();
}

bool stops(const Object *mover, const Object *other) {
    if (mover->getSolidness() == HARD && other->getSolidness() == HARD)
        return true;
    return mover->getNoSoft() && other->getSolidness() == SOFT;
}

/// Sends each collision to both sides, also after one has stopped the mover; false if one did, or
/// if the mover was deleted. Collisions with deleted objects are not sent.
bool collide(Object *const &p_o, ObjectList &list, Vector where) {
    const ObjectWatch watch(list);
    bool do_move = true;
    for (Object *const &other : list) {
        if (nested_moves.isReached())
            return false;
        if (!other)
            continue;
        const EventCollision collision(p_o, other, where);
        p_o->eventHandler(&collision);
        if (p_o && other)
            other->eventHandler(&collision);
        if (!p_o)
            return false;
        if (other && stops(p_o, other))
            do_move = false;
    }
    return do_move;
}

} // namespace

/// False if the object stays where it is; otherwise `where` is its new position.
bool WorldManager::resolveCollisions(Object *const &p_o, Vector &where) {
    if (!p_o->isSolid())
        return true;
    scene_graph.findCollisions(p_o, where, touched);
    return touched.isEmpty() || resolveTouched(p_o, where);
}

bool WorldManager::resolveTouched(Object *const &p_o, Vector &where) {
    // Taken away for the time of the handlers: their own moves come here, too.
    ObjectList list = std::move(touched);
    const bool may_move = slide(p_o, list, where) && collide(p_o, list, where);
    touched = std::move(list);
    return may_move;
}

/// An object that avoids collisions and touches a hard one goes elsewhere, with other collisions;
/// false if it cannot.
bool WorldManager::slide(const Object *p_o, ObjectList &list, Vector &where) const {
    const Object *obstacle =
        p_o->getSolidness() == HARD && p_o->getAvoidCollisions() ? firstHard(list) : nullptr;
    if (!obstacle)
        return true;
    where = slidPosition(p_o, getNormal(p_o, obstacle));
    scene_graph.findCollisions(p_o, where, list);
    if (!firstHard(list))
        return true;
    logLine(5, "WorldManager::moveObject(): Double collision. Object (avoid obstacles) cannot "
               "move.");
    return false;
}

int WorldManager::moveObject(Object *p_o, Vector where) {
    if (!isLiving(p_o))
        return refuseDead("moveObject", p_o);
    return moveLiving(p_o, where);
}

int WorldManager::moveLiving(Object *p_o, Vector where) {
    if (!isFinite(where))
        return p_o->Object::setPosition(where); // This logs and refuses it.
    const NestingLimit::Call call(nested_moves);
    if (call.isRefused()) {
        if (nested_moves.isFirstRefusal())
            logFailure(
                "WorldManager::moveObject(): Error! %d moves are under way, each made from a "
                "handler or setPosition() of the one before. Ignored.",
                NestingLimit::MOST);
        return -1;
    }
    const ObjectWatch watch(p_o);
    if (!resolveCollisions(p_o, where))
        return -1;

    const Box before = getWorldBox(p_o);
    p_o->setPosition(where);
    if (!p_o)
        return -1;
    if (!boxIntersectsBox(getWorldBox(p_o), boundary) && boxIntersectsBox(before, boundary)) {
        const EventOut out;
        p_o->eventHandler(&out);
    }
    if (p_o && p_o == view_following)
        setViewPosition(followedCentre(view, view_slack, p_o->getPosition()));
    return 0;
}

} // namespace sv
