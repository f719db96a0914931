/// One search for a path, of an object to a cell or to another object, in the world as large as it
/// is when the search begins, whatever the boundary becomes.
///
/// Its object owns it, the path manager gives it its share of each step. Game-loop thread only.
#pragma once

#include "selvane/core/Vector.h"
#include "selvane/path/GridSearch.h"

#include <memory>
#include <vector>

namespace sv {

class Object;

class PathFind {
  public:
    /// A search that makes sense, or null with a line in the log: not from or to outside the world,
    /// and not to the cell that the object is in (that line at level 5). `p_target` may be null.
    static std::unique_ptr<PathFind> create(Object *p_object, Vector to, const Object *p_target);

    /// From the cell nearest to the object to the one nearest to `to`; to the nearest in the world,
    /// if they are outside. Borrows both objects.
    PathFind(Object *p_object, Vector to, const Object *p_target = nullptr);
    PathFind(Object *p_object, const Object *p_target);

    /// Expands one cell: PATH_FOUND, PATH_SEARCHING, or PATH_NONE, which it is too, with a line in
    /// the log, if the world is empty or too large (see GridSearch::MAX_CELLS).
    ///
    /// What blocks is what is hard, except what covers the goal. With a target the search ends as
    /// soon as the object would touch it, if it stood at the goal.
    int cycleOnce();

    /// From the start to the goal, cell by cell; empty unless it is found.
    std::vector<Vector> getPath() const;

    Object *getObject() const { return object; }
    const Object *getTarget() const { return target; }

    /// The target is gone: the search goes on to where it was.
    void forgetTarget() { target = nullptr; }

  private:
    bool isBlocked(Cell cell) const;
    bool touchesTarget(Cell cell) const;

    Object *object;
    const Object *target;
    GridSearch search;
};

} // namespace sv
