#include "selvane/path/PathFind.h"

#include "selvane/core/EventPath.h"
#include "selvane/core/LogManager.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"
#include "selvane/world/geometry.h"

#include <algorithm>
#include <cmath>

namespace sv {

namespace {

/// Whole cells along an extent, capped at a number that is too large for any search.
std::uint32_t cellsAlong(float extent) {
    constexpr float most = 2.0F * GridSearch::MAX_CELLS;
    return static_cast<std::uint32_t>(std::min(std::max(0.0F, extent), most));
}

Cell worldSize() {
    const Box boundary = WorldManager::getInstance().getBoundary();
    return {cellsAlong(boundary.horizontal), cellsAlong(boundary.vertical)};
}

/// Also false for NaN.
bool isInside(Vector position, Cell size) {
    return position.x >= 0 && position.x < static_cast<float>(size.x) && position.y >= 0 &&
           position.y < static_cast<float>(size.y);
}

std::uint32_t nearestAlong(float coordinate, std::uint32_t count) {
    const float last = static_cast<float>(count) - 1;
    return static_cast<std::uint32_t>(
        std::max(0.0F, std::min(std::floor(coordinate + 0.5F), last)));
}

/// The nearest rather than the one to the upper left: an object's box lies around its position, so
/// that it covers the nearest cell.
Cell nearestCell(Vector position, Cell size) {
    return {nearestAlong(position.x, size.x), nearestAlong(position.y, size.y)};
}

Vector toVector(Cell cell) {
    return {static_cast<float>(cell.x), static_cast<float>(cell.y)};
}

} // namespace

void PathFindDeleter::operator()(PathFind *p_path_find) const {
    delete p_path_find;
}

std::unique_ptr<PathFind> PathFind::create(Object *p_object, Vector to, const Object *p_target) {
    const Cell size = worldSize();
    const Vector from = p_object->getPosition();
    for (const Vector end : {from, to}) {
        if (isInside(end, size))
            continue;
        logFailure("Object::findPath(): Warning! (%g, %g) is outside the world.",
                   static_cast<double>(end.x), static_cast<double>(end.y));
        return nullptr;
    }
    if (nearestCell(from, size) == nearestCell(to, size)) {
        logLine(5, "Object::findPath(): Warning! Object %d stands at (%g, %g) already.",
                p_object->getId(), static_cast<double>(to.x), static_cast<double>(to.y));
        return nullptr;
    }
    return std::make_unique<PathFind>(p_object, to, p_target);
}

PathFind::PathFind(Object *p_object, Vector to, const Object *p_target)
    : object(p_object), target(p_target),
      search(worldSize(), nearestCell(p_object->getPosition(), worldSize()),
             nearestCell(to, worldSize())) {}

PathFind::PathFind(Object *p_object, const Object *p_target)
    : PathFind(p_object, p_target->getPosition(), p_target) {}

int PathFind::cycleOnce() {
    if (!search.isAllocated()) {
        logLine("PathFind::cycleOnce(): node graph not allocated.  Cannot find path.");
        return PATH_NONE;
    }
    const bool is_searching = search.expand([this](Cell cell) { return isBlocked(cell); },
                                            [this](Cell cell) { return touchesTarget(cell); });
    if (search.isFound())
        return PATH_FOUND;
    return is_searching ? PATH_SEARCHING : PATH_NONE;
}

std::vector<Vector> PathFind::getPath() const {
    std::vector<Vector> path;
    for (const Cell cell : search.path())
        path.push_back(toVector(cell));
    return path;
}

bool PathFind::isBlocked(Cell cell) const {
    return WorldManager::getInstance().getSceneGraph().isBlocked(object, toVector(cell),
                                                                 toVector(search.getGoal()));
}

bool PathFind::touchesTarget(Cell cell) const {
    return target && boxIntersectsBox(getWorldBox(object, toVector(cell)),
                                      getWorldBox(target, toVector(search.getGoal())));
}

} // namespace sv
