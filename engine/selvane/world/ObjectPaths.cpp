// How an object asks for a path and follows it.

#include "selvane/core/EventPath.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/ObjectWatch.h"
#include "selvane/path/PathManager.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"

namespace sv {

int Object::eventHandler(const Event *p_event) {
    if (p_event->getType() != PATH_EVENT)
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
    // A handler that asked for the next path before it passed the event on keeps that search.
    if (!(isSearching() && PathManager::getInstance().isTelling(this)))
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

int Object::findPath(const Object *p_target) {
    if (!p_target)
        return logFailure("Object::findPath(): Warning! Object %d has no target.", id);
    if (!WorldManager::getInstance().isLiving(p_target))
        return logFailure("Object::findPath(): Warning! The target of Object %d, %p, is no living "
                          "object. Ignored.",
                          id, static_cast<const void *>(p_target));
    return startSearch(p_target->getPosition(), p_target);
}

/// A search whose end is being told to this object is over.
bool Object::isSearching() const {
    return path_finder && PathManager::getInstance().isPending(path_finder.get());
}

int Object::startSearch(Vector to, const Object *p_target) {
    if (isSearching()) {
        logLine(5, "Object::findPath(): Warning! Object %d is searching already.", id);
        return -1;
    }
    dropPathFind();
    path_finder = PathManager::getInstance().search(this, to, p_target);
    return path_finder ? 0 : -1;
}

void Object::stepPath() {
    if (!follow_path)
        return;
    Object *p_me = this; // An override of setPosition() may delete it.
    const ObjectWatch watch(p_me);
    // No more than it has now: an override that puts each one back would never let the step end.
    for (std::size_t most = path.waypoints.size(); most > 0 && takeWaypoint(p_me); --most) {
    }
    if (!p_me)
        return;
    const auto &ahead = getPath().waypoints;
    if (!ahead.empty()) {
        turn(normalized(ahead.front() - position));
        sayIfStill();
        return;
    }
    turn({0, 0});
    setFollowPath(false);
}

/// Takes the object to its next waypoint, if there is one in reach; whether it did and still lives.
bool Object::takeWaypoint(Object *const &p_me) {
    // Three quarters of a step's travel: nearer than that, the next step would overshoot, whatever
    // the speed.
    constexpr float reach = 3 * 0.25F;
    const auto &waypoints = path.waypoints;
    if (passed == waypoints.size())
        return false;
    const Vector next = waypoints[passed];
    if (distance(position, next) > speed * reach)
        return false;
    path_is_new = false;
    setPosition(next);
    if (!p_me)
        return false;
    setModified(Attribute::PATH);
    // An override may have installed another path. All of that is still ahead, unless it begins
    // with the waypoint just reached.
    if (passed < waypoints.size() && (!path_is_new || waypoints[passed] == next))
        ++passed;
    return true;
}

/// In one go, and only when somebody looks or the step ends: one by one, a path of a million takes
/// minutes.
void Object::dropPassed() const {
    auto &waypoints = path.waypoints;
    waypoints.erase(waypoints.begin(), waypoints.begin() + static_cast<std::ptrdiff_t>(passed));
    passed = 0;
}

/// Counts as a change only if it is one: an object on its path turns in every step.
void Object::turn(Vector new_direction) {
    if (new_direction != direction)
        setDirection(new_direction);
}

/// Once for each object: it may stand there for as long as the game runs.
void Object::sayIfStill() {
    if (speed != 0 || !isNews(Notice::NO_SPEED))
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
