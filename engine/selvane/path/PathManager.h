/// Runs the pending path searches for a share of each step, one expansion each in turn, and sends
/// an object the result of its search as an EventPath.
///
/// An object asks with Object::findPath(); a game can also add a PathFind of its own. Borrows the
/// searches: each belongs to its object. Game-loop thread only.
#pragma once

#include "selvane/core/Manager.h"
#include "selvane/core/Vector.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace sv {

class Object;
class PathFind;
struct PathFindDeleter;

class PathManager : public Manager {
  public:
    static PathManager &getInstance();

    /// From here on the searches get at least a tenth of the frame time in every step. 0, or -1 if
    /// already started.
    int startUp() override;
    void shutDown() override;

    /// Adds a search to the pending ones without owning it. 0, or -1 for null. REQUIRES: its object
    /// and its target, if any, live; from here on either may be deleted.
    int add(PathFind *p_path_find);

    /// Removes every occurrence of a search. 0, or -1 for null or if it is not pending.
    int remove(const PathFind *p_path_find);

    // Called by the engine.

    /// Runs the pending searches for about that many milliseconds, or for the least share of a step
    /// if that is longer. If both are 0 or less, each search still gets one expansion. Removes each
    /// search that ends and sends its object the result. The handler may start and drop searches
    /// and delete objects.
    void cycle(int milliseconds_left);

    /// Creates and adds a search of `p_o`; null if PathFind::create() refuses it.
    std::unique_ptr<PathFind, PathFindDeleter> search(Object *p_o, Vector to,
                                                      const Object *p_target);

    /// Whether a search has not ended. While its object is notified of its end, it has.
    bool isPending(const PathFind *p_path_find) const;

    /// Whether an object's handler is being notified of its search's end, further up the stack. A
    /// search of that object that is pending meanwhile is a new one.
    bool isNotifying(const Object *p_o) const { return notified == p_o; }

    /// Called when an object leaves the world: removes its searches and makes the others forget it
    /// as their target.
    void forget(const Object *p_o);

  private:
    class Budget;

    PathManager();

    void walk(Budget &budget);
    void deliver(PathFind *search, int status);
    std::size_t removeIf(const std::function<bool(const PathFind *)> &matches);

    std::vector<PathFind *> searches;
    int cycle_time = 0;       // Milliseconds, the least share of a step.
    std::size_t position = 0; // Of the search whose turn is next.
    const Object *notified = nullptr;
};

} // namespace sv
