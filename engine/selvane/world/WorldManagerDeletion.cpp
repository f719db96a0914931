// How objects leave the world: marked, deleted at the end of the update, or only taken out.

#include "selvane/core/LogManager.h"
#include "selvane/core/ObjectWatch.h"
#include "selvane/core/RaisedFlag.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"

#include <exception>
#include <utility>

namespace sv {

int WorldManager::markForDelete(Object *p_o) {
    if (!isLiving(p_o))
        return refuseDead("markForDelete", p_o);
    if (deletions.contains(p_o))
        return 0;
    if (deletions.insert(p_o) != 0)
        return logFailure(
            "WorldManager::markForDelete(): Error! unable to add Object %p to deletions list",
            static_cast<const void *>(p_o));
    return 0;
}

int WorldManager::markForDelete(const ObjectList &list) {
    int result = 0;
    for (Object *p_o : list)
        if (markForDelete(p_o) != 0)
            result = -1;
    return result;
}

int WorldManager::retire(Object *p_o) {
    if (markForDelete(p_o) != 0)
        return -1;
    return p_o->setActive(false);
}

void WorldManager::retireAll(const ObjectList &keep) {
    for (Object *p_o : getAllObjects(true))
        if (!keep.contains(p_o))
            retire(p_o);
}

/// Objects made meanwhile wait: destructors that make and mark the next object would never let it
/// end.
void WorldManager::disposeMarked() {
    const std::uint64_t first_new = living.getNextNumber();
    for (int i = 0; Object *p_o = deletions.at(i);) {
        if (living.isMadeSince(p_o, first_new)) {
            ++i;
        } else {
            dispose(p_o); // This removes it from the list, and maybe others.
            i = 0;
        }
    }
}

void WorldManager::dispose(Object *p_o) {
    const RaisedFlag disposing(is_disposing);
    const ObjectWatch destructors;
    if (!isLiving(p_o)) { // Something else was constructed in its place.
        forget(p_o);
        scene_graph.purge(p_o);
    } else if (p_o->isMadeByNew()) {
        delete p_o;
    } else {
        detach(p_o);
    }
}

void WorldManager::detach(Object *p_o) {
    forget(p_o);
    if (living.isDetached(p_o))
        return;
    warnDetached(p_o);
    forgetEverywhere(p_o); // No more events, as if it had been deleted.
    scene_graph.removeObject(p_o);
    living.setDetached(p_o, true);
}

void WorldManager::warnDetached(const Object *p_o) {
    if (std::exchange(warned_detached, true))
        return;
    logLine(
        "WorldManager: Warning! Object %d (%s) was not made by Object's new, so it is not deleted "
        "but taken out of the world.",
        p_o->getId(), p_o->getType().c_str());
}

/// Not for the object of a constructor that throws: that is no mistake.
void WorldManager::warnDeletedInStep(const Object *p_o) {
    if (is_disposing || !ObjectWatch::isAny() || !p_o->isMadeByNew() ||
        std::uncaught_exceptions() > 0 || std::exchange(warned_deleted_in_step, true))
        return;
    logLine(
        "WorldManager: Warning! Object %d (%s) was deleted in the middle of a step. Objects are "
        "deleted by WorldManager::markForDelete().",
        p_o->getId(), p_o->getType().c_str());
}

} // namespace sv
