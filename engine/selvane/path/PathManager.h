/// Gives the searches for paths their share of every step, one expansion each in turn, and tells
/// an object how its search ended.
///
/// Borrows the searches: each belongs to its object. Game-loop thread only.
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

    /// A tenth of the frame time goes to the searches in every step, however late it is. 0, or -1
    /// if it is started already.
    int startUp() override;
    void shutDown() override;

    /// Works on the pending searches for about that many milliseconds, and for the least share of
    /// a step if that is more. If both are 0 or less, each search still gets one expansion. Drops
    /// each search that ends and hands the result to its object, as an EventPath. The handler may
    /// ask for paths, give them up and delete objects.
    void cycle(int milliseconds_left);

    /// A search for the way of `p_o`, pending already, see PathFind::create(); null if that refuses
    /// it.
    std::unique_ptr<PathFind, PathFindDeleter> search(Object *p_o, Vector to,
                                                      const Object *p_target);

    /// Adds a search to the pending ones; its object keeps it. 0, or -1 for null. REQUIRES: its
    /// object lives, and its target, if it has one; from here on either may be deleted.
    int add(PathFind *p_path_find);

    /// 0, or -1 for null or if it is not pending.
    int remove(const PathFind *p_path_find);

    /// Whether the search is still to end. When its object is told, it no longer is.
    bool isPending(const PathFind *p_path_find) const;

    /// Whether an object is being told how its search ended, further up the stack. A search of its
    /// that is pending meanwhile is a new one.
    bool isTelling(const Object *p_o) const { return told == p_o; }

    /// Called when an object leaves the world: its searches are no longer pending, and no pending
    /// one aims at it.
    void forget(const Object *p_o);

  private:
    class Budget;

    PathManager();

    void walk(Budget &budget);
    void deliver(PathFind *p_search, int status);
    std::size_t takeOut(const std::function<bool(const PathFind *)> &is_meant);

    std::vector<PathFind *> searches;
    int cycle_time = 0;       // Milliseconds, the least share of a step.
    std::size_t position = 0; // Of the search whose turn is next.
    const Object *told = nullptr;
};

} // namespace sv
