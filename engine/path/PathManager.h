/// Gives the searches for paths their share of every step. There are none yet.
///
/// Game-loop thread only.
#pragma once

#include "core/Manager.h"

#include <vector>

namespace sv {

class Object;
class PathFind;

class PathManager : public Manager {
  public:
    static PathManager &getInstance();

    int startUp() override;
    void shutDown() override;

    /// Works on the pending searches for about that many milliseconds; 0 or less is allowed.
    void cycle(int /*milliseconds_left*/) {}

    /// Adds a search to the pending ones; its object keeps it. 0, or -1 for null.
    int add(PathFind *p_path_find);

    /// 0, or -1 for null or if it is not pending.
    int remove(const PathFind *p_path_find);

    /// Called when an object leaves the world: no pending search may aim at it any longer.
    void forgetTarget(const Object *p_o);

  private:
    PathManager();

    std::vector<PathFind *> searches;
};

} // namespace sv
