/// One search for a path from an object to a cell or to another object. It keeps to the world's
/// size at its start, even if the boundary changes.
///
/// Its object owns it, and the path manager runs it. Game-loop thread only.
#pragma once

#include "selvane/core/Vector.h"
#include "selvane/path/GridSearch.h"

#include <memory>
#include <vector>

namespace sv {

class Object;

class PathFind {
  public:
    /// A new search; null with a line in the log if either end is outside the world, or if the
    /// object is in the goal's cell already (logged at level 5). `p_target` may be null.
    static std::unique_ptr<PathFind> create(Object *p_object, Vector to, const Object *p_target);

    /// From the cell nearest to the object to the one nearest to `to`, or to the nearest cells in
    /// the world if these are outside. Borrows both objects.
    PathFind(Object *p_object, Vector to, const Object *p_target = nullptr);
    PathFind(Object *p_object, const Object *p_target);

    /// Expands one cell. PATH_FOUND, PATH_SEARCHING or PATH_NONE; also PATH_NONE, with a line in
    /// the log, if the world is empty or larger than GridSearch::MAX_CELLS.
    ///
    /// Hard objects block, except those that cover the goal. With a target, the search ends as soon
    /// as the object would touch the target if that stood at the goal.
    int cycleOnce();

    /// From the start to the goal, cell by cell; empty unless it is found.
    std::vector<Vector> getPath() const;

    Object *getObject() const { return object; }
    const Object *getTarget() const { return target; }

    /// For a deleted target: the search goes on to where that was.
    void forgetTarget() { target = nullptr; }

  private:
    bool isBlocked(Cell cell) const;
    bool touchesTarget(Cell cell) const;

    Object *object;
    const Object *target;
    GridSearch search;
};

} // namespace sv
