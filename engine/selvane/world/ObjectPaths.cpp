// How an object asks for a path and follows it.

#include "selvane/core/EventPath.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/ObjectWatch.h"
#include "selvane/path/PathManager.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"

namespace sv {

int Object::eventHandler(const Event *p_event) {
    if (!p_event->isOfType(PATH_EVENT))
        return 0;
    const auto *answer = eventCast<EventPath>(p_event);
    if (!answer) {
        logLine("Object::eventHandler(): Error! Dynamic cast to EventPath failed.");
        return 0;
    }
    if (answer->getStatus() == PATH_FOUND) {
        setPath({answer->getPath(), 0});
        setFollowPath(true);
    }
    // A handler may have started the next search before it called this one; that search stays.
    if (!(isSearching() && PathManager::getInstance().isNotifying(this)))
        dropPathFind();
    return 1;
}

void Object::setPath(const Path &new_path) {
    for (const Vector waypoint : new_path.waypoints)
        if (isRefused("waypoint", waypoint))
            return;
    path = new_path;
    passed = 0;
    path_is_new = true;
    setModified(Attribute::PATH);
}

const Path &Object::getPath() const {
    dropPassed();
    return path;
}

void Object::setFollowPath(bool new_follow_path) {
    follow_path = new_follow_path;
    const auto &ahead = getPath().waypoints;
    if (!ahead.empty())
        turn(normalized(ahead.front() - position));
    setModified(Attribute::FOLLOW_PATH);
}

int Object::findPath(Vector to) {
    return startSearch(to, nullptr);
}

int Object::findPath(const Object *target) {
    if (!target)
        return logFailure("Object::findPath(): Warning! Object %d has no target.", id);
    if (!WorldManager::getInstance().isLiving(target))
        return logFailure("Object::findPath(): Warning! The target of Object %d, %p, is no living "
                          "object. Ignored.",
                          id, static_cast<const void *>(target));
    return startSearch(target->getPosition(), target);
}

/// False once the result of the search is being delivered.
bool Object::isSearching() const {
    return path_finder && PathManager::getInstance().isPending(path_finder.get());
}

int Object::startSearch(Vector to, const Object *target) {
    if (isSearching()) {
        logLine(5, "Object::findPath(): Warning! Object %d is searching already.", id);
        return -1;
    }
    dropPathFind();
    path_finder = PathManager::getInstance().search(this, to, target);
    return path_finder ? 0 : -1;
}

void Object::followPath() {
    Object *self = this; // An override of setPosition() may delete it.
    const ObjectWatch watch(self);
    // At most as many as there are now: an override that puts each one back must not loop for ever.
    for (std::size_t most = path.waypoints.size(); most > 0 && takeWaypoint(self); --most) {
    }
    if (!self)
        return;
    const auto &ahead = getPath().waypoints;
    if (!ahead.empty()) {
        turn(normalized(ahead.front() - position));
        warnIfNotMoving();
        return;
    }
    turn({0, 0});
    setFollowPath(false);
}

/// Moves the object to its next waypoint if that is in reach; whether it did and still lives.
bool Object::takeWaypoint(Object *const &self) {
    // Within three quarters of a step's travel of the waypoint, the next step would overshoot.
    constexpr float reach = 3 * 0.25F;
    const auto &waypoints = path.waypoints;
    if (passed == waypoints.size())
        return false;
    const Vector next = waypoints[passed];
    if (distance(position, next) > speed * reach)
        return false;
    path_is_new = false;
    setPosition(next);
    if (!self)
        return false;
    setModified(Attribute::PATH);
    // An override may have set another path. All of that is still ahead, unless it begins with the
    // waypoint just reached.
    if (passed < waypoints.size() && (!path_is_new || waypoints[passed] == next))
        ++passed;
    return true;
}

/// All at once, and only when the path is read or the step ends: one by one, a path of a million
/// waypoints takes minutes.
void Object::dropPassed() const {
    auto &waypoints = path.waypoints;
    waypoints.erase(waypoints.begin(), waypoints.begin() + static_cast<std::ptrdiff_t>(passed));
    passed = 0;
}

/// Sets the direction only if it differs: an object on its path turns in every step, and the change
/// would be sent each time.
void Object::turn(Vector new_direction) {
    if (new_direction != direction)
        setDirection(new_direction);
}

/// Once for each object: it may stand still for the rest of the game.
void Object::warnIfNotMoving() {
    if (speed != 0 || !isFirst(Warning::NO_SPEED))
        return;
    logLine("Object::stepPath(): Warning! Object %d follows a path with speed 0.", id);
}

void Object::dropPathFind() {
    if (!path_finder)
        return;
    PathManager::getInstance().remove(path_finder.get());
    path_finder.reset();
}

} // namespace sv
