#include "selvane/path/PathManager.h"

#include "selvane/core/Clock.h"
#include "selvane/core/EventPath.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/ObjectWatch.h"
#include "selvane/loop/GameManager.h"
#include "selvane/path/PathFind.h"
#include "selvane/world/Object.h"

#include <algorithm>
#include <utility>

namespace sv {

/// The time of one cycle, in whole milliseconds from its making.
class PathManager::Budget {
  public:
    explicit Budget(int new_limit) : limit(new_limit) {}

    /// Looks at the clock.
    void spend() {
        const int split = clock.split();
        // Set back, it would give the time that has passed a second time: the cycle ends.
        went_back = went_back || split < elapsed;
        elapsed = std::max(elapsed, split);
    }

    bool isLeft() const { return !went_back && milliseconds() < limit; }
    bool isExceeded() const { return milliseconds() > limit; }
    /// With no time at all to spend, a walk ends when everybody had a turn: paths are to be found
    /// in a game whose frames leave none, too.
    bool endsWalk() const { return went_back || (limit > 0 && isExceeded()); }
    int getLimit() const { return limit; }

  private:
    int milliseconds() const { return elapsed / 1000; }

    Clock clock;
    int limit;
    int elapsed = 0; // Microseconds.
    bool went_back = false;
};

PathManager &PathManager::getInstance() {
    static PathManager &instance = *new PathManager;
    return instance;
}

PathManager::PathManager() {
    setType("PathManager");
}

int PathManager::startUp() {
    if (isStarted())
        return refuseSecondStart();
    cycle_time = GameManager::getInstance().getFrameTime() / 10;
    Manager::startUp();
    logLine(5, "PathManager::startUp(): successfully started.");
    return 0;
}

void PathManager::shutDown() {
    Manager::shutDown();
    logLine(5, "PathManager::shutDown(): successfully stopped.");
}

void PathManager::cycle(int milliseconds_left) {
    Budget budget(std::max(cycle_time, milliseconds_left));
    do
        walk(budget);
    while (!searches.empty() && budget.isLeft());
    if (budget.isExceeded())
        logLine(5, "PathManager::cycle(): cycle time %d exceeded.", budget.getLimit());
}

/// One expansion for each search, as long as the budget lasts. One that is added meanwhile waits
/// for the next walk: handlers that ask again at once could keep this one going for ever.
void PathManager::walk(Budget &budget) {
    position = 0;
    for (std::size_t turns = searches.size();
         turns > 0 && position < searches.size() && !budget.endsWalk(); --turns) {
        PathFind *p_search = searches[position++];
        const int status = p_search->cycleOnce();
        if (status != PATH_SEARCHING)
            deliver(p_search, status);
        budget.spend();
    }
}

/// Drops the search before its object is told: the handler may free it, keep it, or start another
/// that gets the same address, and may delete the object.
void PathManager::deliver(PathFind *p_search, int status) {
    Object *p_o = p_search->getObject();
    const EventPath result(status, p_search->getPath());
    remove(p_search);
    const Object *outer = std::exchange(told, p_o);
    const ObjectWatch handlers;
    p_o->eventHandler(&result);
    told = outer;
}

std::unique_ptr<PathFind, PathFindDeleter> PathManager::search(Object *p_o, Vector to,
                                                               const Object *p_target) {
    std::unique_ptr<PathFind, PathFindDeleter> search(
        PathFind::create(p_o, to, p_target).release());
    add(search.get());
    return search;
}

int PathManager::add(PathFind *p_path_find) {
    if (!p_path_find)
        return -1;
    searches.push_back(p_path_find);
    return 0;
}

int PathManager::remove(const PathFind *p_path_find) {
    const auto is_meant = [&](const PathFind *p_search) { return p_search == p_path_find; };
    return takeOut(is_meant) > 0 ? 0 : -1;
}

bool PathManager::isPending(const PathFind *p_path_find) const {
    return std::find(searches.begin(), searches.end(), p_path_find) != searches.end();
}

/// However often one is there. The turn stays with the search that has it.
std::size_t PathManager::takeOut(const std::function<bool(const PathFind *)> &is_meant) {
    const auto next = searches.begin() + static_cast<std::ptrdiff_t>(position);
    position -= static_cast<std::size_t>(std::count_if(searches.begin(), next, is_meant));
    return std::erase_if(searches, is_meant);
}

void PathManager::forget(const Object *p_o) {
    takeOut([&](const PathFind *p_search) { return p_search->getObject() == p_o; });
    for (PathFind *p_search : searches)
        if (p_search->getTarget() == p_o)
            p_search->forgetTarget();
}

} // namespace sv
