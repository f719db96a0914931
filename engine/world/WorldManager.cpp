#include "world/WorldManager.h"

#include "core/Event.h"
#include "core/LogManager.h"
#include "path/PathManager.h"
#include "world/Object.h"
#include "world/ViewObject.h"
#include "world/geometry.h"

namespace sv {

WorldManager &WorldManager::getInstance() {
    static WorldManager instance;
    return instance;
}

WorldManager::WorldManager() {
    setType("WorldManager");
}

bool WorldManager::isValid(const std::string &event_type) const {
    LogManager &log = LogManager::getInstance();
    if (event_type == KEYBOARD_EVENT || event_type == MOUSE_EVENT || event_type == STEP_EVENT) {
        log.writeLog("WorldManager::isValid(): WorldManager does not handle %s",
                     event_type.c_str());
        return false;
    }
    if (event_type == OUT_EVENT || event_type == COLLISION_EVENT) {
        log.writeLog("WorldManager::isValid(): Event %s handled automatically.",
                     event_type.c_str());
        return false;
    }
    return true;
}

int WorldManager::startUp() {
    if (isStarted())
        return refuseSecondStart();
    deletions.clear();
    boundary = {};
    view = {};
    view_slack = {};
    view_following = nullptr;
    if (scene_graph.startUp() != 0)
        return logFailure("WorldManager::startUp(): Error! Unable to startup Scenegraph");
    Manager::startUp();
    LogManager::getInstance().writeLog(5, "WorldManager::startUp(): successfully started.");
    return 0;
}

void WorldManager::shutDown() {
    Manager::shutDown();
    // From the live lists: a destructor may delete, or move to another list, what a copy would
    // still name. Every destructor takes its object out, so the lists do run empty.
    while (Object *p_o = scene_graph.firstObject())
        delete p_o;
    scene_graph.shutDown();
    LogManager::getInstance().writeLog(5, "WorldManager::shutDown(): Successfully stopped.");
}

int WorldManager::insertObject(Object *p_o) {
    if (isStarted())
        return scene_graph.insertObject(p_o);
    LogManager &log = LogManager::getInstance();
    log.writeLog(2, "WorldManager::insertObject(): Warning! Not adding Object %d", p_o->getId());
    log.writeLog(2, "                              because WorldManager not started.");
    return -1;
}

int WorldManager::removeObject(Object *p_o) {
    if (view_following == p_o)
        view_following = nullptr;
    deletions.remove(p_o);
    PathManager::getInstance().forget(p_o);
    return scene_graph.removeObject(p_o);
}

ObjectList WorldManager::getAllObjects(bool include_inactive) const {
    return include_inactive ? scene_graph.activeObjects() + scene_graph.inactiveObjects()
                            : scene_graph.activeObjects();
}

ObjectList WorldManager::objectsOfType(const std::string &object_type) const {
    return scene_graph.objectsOfType(object_type);
}

ObjectList WorldManager::getCollisions(const Object *p_o, Vector where) const {
    return scene_graph.getCollisions(p_o, where);
}

int WorldManager::markForDelete(Object *p_o) {
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

void WorldManager::update() {
    const ObjectList movers = scene_graph.activeObjects();
    for (Object *p_o : movers) {
        const Vector predicted = p_o->predictPosition();
        if (predicted != p_o->getPosition())
            moveObject(p_o, predicted);
        p_o->stepPath();
        p_o->stepAcceleration();
    }
    deleteMarked();
}

void WorldManager::deleteMarked() {
    // Each destructor takes its object off the list.
    while (Object *p_o = deletions.at(0))
        delete p_o;
}

void WorldManager::draw() {
    for (int altitude = 0; altitude <= MAX_ALTITUDE; ++altitude) {
        const ObjectList layer = scene_graph.visibleObjects(altitude);
        for (Object *p_o : layer) {
            // A view object's position is in the view, so its box in the world tells nothing.
            if (boxIntersectsBox(getWorldBox(p_o), view) || dynamic_cast<ViewObject *>(p_o))
                p_o->draw();
        }
    }
}

void WorldManager::setViewPosition(Vector centre) {
    view = viewAround(centre, view, boundary);
}

void WorldManager::setViewSlack(Vector new_view_slack) {
    const auto out_of_range = [](float part) { return part < 0 || part > 1; };
    if (out_of_range(new_view_slack.x) || out_of_range(new_view_slack.y))
        LogManager::getInstance().writeLog(
            "WorldManager::setViewSlack(): Warning! view slack units out of range [0-1]");
    view_slack = new_view_slack;
}

} // namespace sv
