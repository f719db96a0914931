#include "selvane/world/SceneGraph.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/text.h"

#include <new>

namespace sv {

namespace {

bool isLayer(int altitude) {
    return altitude >= 0 && altitude <= MAX_ALTITUDE;
}

} // namespace

bool SceneGraph::is_game_over = false;

/// A failed step of a change between active and inactive is ignored while the game is over.
int SceneGraph::checkStep(int result, const Object *p_o, const char *step, const char *list) {
    if (result == 0 || is_game_over)
        return 0;
    return logFailure("SceneGraph::updateActive(): %s (%s) failed for %s!", step,
                      printable(p_o->getType()).c_str(), list);
}

int SceneGraph::startUp() {
    types.clear();
    const Config &config = Config::getInstance();
    solid_objects.divide(config.getGridWidth(), config.getGridHeight(), config.getGrid());
    logLine(1, "Scenegraph configuration: SIMPLE");
    return 0;
}

void SceneGraph::shutDown() {
    types.clear();
}

int SceneGraph::insertObject(Object *p_o) {
    ++p_o->filings;
    if (!p_o->isActive())
        return inactive_objects.insert(p_o);
    if (objects.insert(p_o) != 0)
        return logFailure(
            "SceneGraph::insertObject(): Error! unable to insert active Object (id %d)",
            p_o->getId());
    if (insertIntoType(p_o, p_o->getType()) != 0)
        return logFailure(
            "SceneGraph::insertObject(): Error! unable to insert Object (id %d) into type map",
            p_o->getId());
    if (p_o->isSolid() && solid_objects.insert(p_o) != 0)
        return logFailure(
            "SceneGraph::insertObject(): Error! unable to insert solid Object (id %d)",
            p_o->getId());
    if (!p_o->isVisible())
        return 0;
    if (!isLayer(p_o->getAltitude()))
        return logFailure("SceneGraph::insertObject(): Warning! Altitude %d not in range [%d,%d]",
                          p_o->getAltitude(), 0, MAX_ALTITUDE);
    if (layerOf(p_o).insert(p_o) != 0)
        return logFailure(
            "SceneGraph::insertObject(): Error! unable to insert visible object (id %d)",
            p_o->getId());
    return 0;
}

int SceneGraph::removeObject(Object *p_o) {
    const bool is_removed = remove(p_o) == 0;
    if (!is_removed || p_o->filings > 1)
        purge(p_o);
    p_o->filings = 0;
    if (is_removed)
        return 0;
    return logFailure("SceneGraph::removeObject(): Error removing Object (id %d)! Pointer is %p.",
                      p_o->getId(), static_cast<const void *>(p_o));
}

/// 0, or below 0 if the object was missing from a list that it should be in.
int SceneGraph::remove(Object *p_o) {
    if (!p_o->isActive())
        return inactive_objects.remove(p_o);
    int sum = objects.remove(p_o);
    sum += removeFromType(p_o, p_o->getType());
    if (p_o->isVisible())
        sum += isLayer(p_o->getAltitude()) ? layerOf(p_o).remove(p_o) : -1;
    if (p_o->isSolid())
        sum += solid_objects.remove(p_o);
    return sum;
}

/// For an object that was filed more than once, or not as its fields say: remove() may have left it
/// in a list.
void SceneGraph::purge(const Object *p_o) {
    const auto purge_list = [p_o](ObjectList &list) {
        while (list.remove(p_o) == 0) {
        }
    };
    purge_list(objects);
    solid_objects.purge(p_o);
    purge_list(inactive_objects);
    for (ObjectList &layer : visible_objects)
        purge_list(layer);
    for (auto &[type, list] : types)
        purge_list(list);
    std::erase_if(types, [](const auto &entry) { return entry.second.isEmpty(); });
}

int SceneGraph::updateActive(Object *p_o, bool new_active) {
    if (new_active == p_o->isActive())
        return 0;
    // Without memory it may end up in lists of both kinds, or in none. Its removal then looks
    // through all of them.
    try {
        if ((new_active ? activate(p_o) : deactivate(p_o)) == 0)
            return 0;
    } catch (const std::bad_alloc &) {
        ++p_o->filings;
        throw;
    }
    ++p_o->filings;
    return -1;
}

int SceneGraph::deactivate(Object *p_o) {
    int sum = checkStep(objects.remove(p_o), p_o, "remove object", "objects");
    sum += removeFromType(p_o, p_o->getType());
    if (p_o->isVisible())
        sum += checkStep(layerOf(p_o).remove(p_o), p_o, "remove visible object", "visible_objects");
    if (p_o->isSolid())
        sum += checkStep(solid_objects.remove(p_o), p_o, "remove object", "solid_objects");
    sum += checkStep(inactive_objects.insert(p_o), p_o, "insert object", "inactive_objects");
    return sum < 0 ? -1 : 0;
}

int SceneGraph::activate(Object *p_o) {
    int sum = checkStep(objects.insert(p_o), p_o, "insert Object", "objects");
    if (insertIntoType(p_o, p_o->getType()) != 0)
        return logFailure(
            "SceneGraph::updateActive(): Error! insert Object (%s) failed for type map!",
            printable(p_o->getType()).c_str());
    if (p_o->isVisible())
        sum += checkStep(layerOf(p_o).insert(p_o), p_o, "insert Object", "visible_objects");
    if (p_o->isSolid())
        sum += checkStep(solid_objects.insert(p_o), p_o, "insert object", "solid_objects");
    sum += checkStep(inactive_objects.remove(p_o), p_o, "remove object", "inactive_objects");
    return sum < 0 ? -1 : 0;
}

int SceneGraph::updateVisible(Object *p_o, bool new_visible) {
    if (!p_o->isActive() || new_visible == p_o->isVisible())
        return 0;
    ObjectList &layer = layerOf(p_o);
    const int result = new_visible ? layer.insert(p_o) : layer.remove(p_o);
    if (result == 0 || is_game_over)
        return 0;
    return logFailure("SceneGraph::updateVisible(): unable to %s visible object (%s)",
                      new_visible ? "add" : "remove", printable(p_o->getType()).c_str());
}

int SceneGraph::updateAltitude(Object *p_o, int new_altitude) {
    if (!p_o->isActive())
        return 0;
    if (!isLayer(new_altitude))
        return logFailure(
            "SceneGraph::updateAltitude(): New altitude %d not in [%d,%d]!  No update.",
            new_altitude, 0, MAX_ALTITUDE);
    if (!isLayer(p_o->getAltitude()))
        return logFailure("SceneGraph::updateAltitude(): Old altitude %d not in [%d,%d]! This is "
                          "unxepected. No update.",
                          p_o->getAltitude(), 0, MAX_ALTITUDE);
    if (layerOf(p_o).remove(p_o) != 0 && !is_game_over)
        return logFailure("SceneGraph::updateAltitude(): remove from old altitude (%d) failed!",
                          p_o->getAltitude());
    ObjectList &new_layer = visible_objects[static_cast<std::size_t>(new_altitude)];
    if (p_o->isVisible() && new_layer.insert(p_o) != 0)
        return logFailure("SceneGraph::updateAltitude()): insert visible object at altitude %d "
                          "failed!",
                          new_altitude);
    return 0;
}

int SceneGraph::updateSolidness(Object *p_o, Solidness new_solidness) {
    if (!p_o->isActive())
        return 0;
    const bool new_solid = new_solidness == HARD || new_solidness == SOFT;
    if (p_o->isSolid() && !new_solid) {
        if (solid_objects.remove(p_o) != 0 && !is_game_over)
            logLine("SceneGraph::updateSolidness(): unable to remove solid object (%s)",
                    printable(p_o->getType()).c_str());
    } else if (!p_o->isSolid() && new_solid) {
        if (solid_objects.insert(p_o) != 0 && !is_game_over)
            return logFailure(
                "SceneGraph::updateSolidness(): Error! unable to insert solid object");
    }
    return 0;
}

int SceneGraph::updateType(Object *p_o, const std::string &new_type) {
    if (removeFromType(p_o, p_o->getType()) != 0)
        return logFailure("SceneGraph::updateType(): Error! Unable to remove Object (%d) type %s",
                          p_o->getId(), printable(p_o->getType()).c_str());
    if (insertIntoType(p_o, new_type) != 0)
        return logFailure("SceneGraph::updateType(): Error! Unable to insert Object (%d) type %s",
                          p_o->getId(), printable(p_o->getType()).c_str());
    return 0;
}

Object *SceneGraph::firstObject() const {
    return objects.isEmpty() ? inactive_objects.at(0) : objects.at(0);
}

ObjectList SceneGraph::visibleObjects(int altitude) const {
    if (isLayer(altitude))
        return visible_objects[static_cast<std::size_t>(altitude)];
    logLine("SceneGraph::visibleObjects(): Warning! altitude %d not in [%d,%d].", altitude, 0,
            MAX_ALTITUDE);
    return {};
}

ObjectList SceneGraph::objectsOfType(const std::string &type) const {
    const auto found = types.find(type);
    return found == types.end() ? ObjectList() : found->second;
}

int SceneGraph::insertIntoType(Object *p_o, const std::string &type) {
    try {
        return types[type].insert(p_o);
    } catch (const std::bad_alloc &) {
        return -1;
    }
}

int SceneGraph::removeFromType(Object *p_o, const std::string &type) {
    const auto found = types.find(type);
    if (found == types.end() || found->second.remove(p_o) != 0)
        return -1;
    if (found->second.isEmpty())
        types.erase(found);
    return 0;
}

/// REQUIRES: an altitude in 0 to MAX_ALTITUDE, as an object always has.
ObjectList &SceneGraph::layerOf(const Object *p_o) {
    return visible_objects[static_cast<std::size_t>(p_o->getAltitude())];
}

} // namespace sv
