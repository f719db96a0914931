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

/// The time of one cycle, in whole milliseconds since construction.
class PathManager::Budget {
  public:
    explicit Budget(int new_limit) : limit(new_limit) {}

    void update() {
        const int split = clock.split();
        // A clock set back would grant the elapsed time again, so end the cycle.
        went_back = went_back || split < elapsed;
        elapsed = std::max(elapsed, split);
    }

    bool isLeft() const { return !went_back && milliseconds() < limit; }
    bool isExceeded() const { return milliseconds() > limit; }
    /// Without any time to spend, each search still gets its turn, so that paths are found even in
    /// a game whose frames leave no time.
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

/// One expansion for each search while the budget lasts. A search added meanwhile waits for the
/// next walk: handlers that ask again at once could keep this one going forever.
void PathManager::walk(Budget &budget) {
    position = 0;
    for (std::size_t turns = searches.size();
         turns > 0 && position < searches.size() && !budget.endsWalk(); --turns) {
        PathFind *search = searches[position++];
        const int status = search->cycleOnce();
        if (status != PATH_SEARCHING)
            deliver(search, status);
        budget.update();
    }
}

/// Removes the search before its object is notified: the handler may free it, keep it, or start
/// another at the same address, and may delete the object.
void PathManager::deliver(PathFind *search, int status) {
    Object *p_o = search->getObject();
    const EventPath result(status, search->getPath());
    remove(search);
    const Object *outer = std::exchange(notified, p_o);
    const ObjectWatch handlers;
    p_o->eventHandler(&result);
    notified = outer;
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
    const auto matches = [&](const PathFind *search) { return search == p_path_find; };
    return removeIf(matches) > 0 ? 0 : -1;
}

bool PathManager::isPending(const PathFind *p_path_find) const {
    return std::find(searches.begin(), searches.end(), p_path_find) != searches.end();
}

/// Removes every match; `position` stays on the search whose turn is next.
std::size_t PathManager::removeIf(const std::function<bool(const PathFind *)> &matches) {
    const auto next = searches.begin() + static_cast<std::ptrdiff_t>(position);
    position -= static_cast<std::size_t>(std::count_if(searches.begin(), next, matches));
    return std::erase_if(searches, matches);
}

void PathManager::forget(const Object *p_o) {
    removeIf([&](const PathFind *search) { return search->getObject() == p_o; });
    for (PathFind *search : searches)
        if (search->getTarget() == p_o)
            search->forgetTarget();
}

} // namespace sv
