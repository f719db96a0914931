#include "selvane/world/WorldManager.h"

#include "selvane/core/Event.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/ObjectWatch.h"
#include "selvane/core/RaisedFlag.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/path/PathManager.h"
#include "selvane/world/Object.h"
#include "selvane/world/ViewObject.h"
#include "selvane/world/geometry.h"

#include <set>
#include <string>
#include <utility>

namespace sv {

namespace {

constexpr float one_third = 0.33333334F;
constexpr char by_the_step[] = "The step that is under way does it.";

/// Never destroyed: globals may use the world after main().
std::set<std::string> &loggedRefusals() {
    static auto &operations = *new std::set<std::string>;
    return operations;
}

/// True while a handler, a draw() or a destructor of an object runs; logged once for each
/// operation.
bool isRefusedNow(const char *operation, const char *advice) {
    if (!ObjectWatch::isAny())
        return false;
    if (loggedRefusals().insert(operation).second)
        logFailure("WorldManager::%s(): Error! Called from a handler, draw() or destructor of an "
                   "object. Ignored. %s",
                   operation, advice);
    return true;
}

} // namespace

WorldManager &WorldManager::getInstance() {
    static WorldManager &instance = *new WorldManager;
    return instance;
}

WorldManager::WorldManager() {
    setType("WorldManager");
}

int WorldManager::refuseDead(const char *operation, const Object *p_o) {
    return logFailure("WorldManager::%s(): Warning! %p is no living object. Ignored.", operation,
                      static_cast<const void *>(p_o));
}

bool WorldManager::isValid(const std::string &event_type) const {
    if (!event_type.starts_with("sv-")) // Most are a game's own.
        return true;
    if (event_type == KEYBOARD_EVENT || event_type == MOUSE_EVENT || event_type == STEP_EVENT) {
        logLine("WorldManager::isValid(): WorldManager does not handle %s", event_type.c_str());
        return false;
    }
    if (event_type == OUT_EVENT || event_type == COLLISION_EVENT) {
        logLine("WorldManager::isValid(): Event %s handled automatically.", event_type.c_str());
        return false;
    }
    return true;
}

int WorldManager::startUp() {
    if (isStarted())
        return refuseSecondStart();
    if (is_stopping)
        return logFailure("WorldManager::startUp(): Error! Called while it stops. Ignored.");
    deletions.clear();
    fitToWindow();
    view_following = nullptr;
    setPaused(false);
    if (scene_graph.startUp() != 0)
        return logFailure("WorldManager::startUp(): Error! Unable to startup Scenegraph");
    Manager::startUp();
    warnMadeEarly();
    logLine(5, "WorldManager::startUp(): successfully started.");
    return 0;
}

void WorldManager::reset() {
    Object::restartIds();
    loggedRefusals().clear();
    early_id = 0;
    warned_made_early = false;
    warned_deleted_in_step = false;
    warned_detached = false;
    view_following = nullptr;
    setPaused(false);
    fitToWindow();
}

void WorldManager::fitToWindow() {
    setBoundary(window);
    setView(window);
    view_slack = window == Box{} ? Vector{} : Vector{one_third, one_third};
}

void WorldManager::shutDown() {
    if (isRefusedNow("shutDown", "GameManager::shutDown() waits for the end of the step."))
        return;
    const RaisedFlag stopping(is_stopping);
    Manager::shutDown();
    // From the live lists: a destructor may delete or move objects that a copy would still hold.
    // dispose() removes its object from them, so this ends.
    while (Object *p_o = scene_graph.firstObject())
        dispose(p_o);
    scene_graph.shutDown();
    logLine(5, "WorldManager::shutDown(): Successfully stopped.");
}

void WorldManager::objectCreated(Object *p_o) {
    living.add(p_o);
    insertObject(p_o);
}

void WorldManager::objectDestroyed(Object *p_o) {
    forget(p_o);
    if (!living.isDetached(p_o))
        scene_graph.removeObject(p_o);
    warnDeletedInStep(p_o);
    living.remove(p_o);
}

int WorldManager::insertObject(Object *p_o) {
    if (!isLiving(p_o))
        return refuseDead("insertObject", p_o);
    if (isStarted()) {
        living.setDetached(p_o, false);
        return scene_graph.insertObject(p_o);
    }
    logLine(2, "WorldManager::insertObject(): Warning! Not adding Object %d", p_o->getId());
    logLine(2, "                              because WorldManager not started.");
    if (early_id == 0 && !is_stopping)
        early_id = p_o->getId();
    return -1;
}

/// At the start of the world, since the log is not open before.
void WorldManager::warnMadeEarly() {
    if (early_id == 0 || std::exchange(warned_made_early, true))
        return;
    logLine(
        "WorldManager: Warning! Object %d was made while the engine was not started, and stays out "
        "of the world: it is neither moved nor drawn.",
        early_id);
}

int WorldManager::removeObject(Object *p_o) {
    if (!isLiving(p_o))
        return refuseDead("removeObject", p_o);
    forget(p_o);
    return scene_graph.removeObject(p_o);
}

/// Except in the lists of the scene graph.
void WorldManager::forget(const Object *p_o) {
    if (view_following == p_o)
        view_following = nullptr;
    deletions.remove(p_o);
    PathManager::getInstance().forget(p_o);
}

ObjectList WorldManager::getAllObjects(bool include_inactive) const {
    return include_inactive ? scene_graph.activeObjects() + scene_graph.inactiveObjects()
                            : scene_graph.activeObjects();
}

ObjectList WorldManager::objectsOfType(const std::string &object_type) const {
    return scene_graph.objectsOfType(object_type);
}

ObjectList WorldManager::getCollisions(const Object *p_o, Vector where) const {
    if (!isLiving(p_o)) {
        refuseDead("getCollisions", p_o);
        return {};
    }
    return scene_graph.getCollisions(p_o, where);
}

void WorldManager::setPaused(bool new_is_paused) {
    is_paused = new_is_paused;
    Animation::holdAll(is_paused);
}

void WorldManager::update() {
    if (isRefusedNow("update", by_the_step))
        return;
    if (!is_paused)
        moveAll();
    disposeMarked();
}

void WorldManager::moveAll() {
    walked = scene_graph.getActive();
    const ObjectWatch watch(walked);
    for (Object *const &p_o : walked) {
        if (!p_o)
            continue;
        const Vector predicted = p_o->predictPosition();
        if (predicted != p_o->getPosition())
            moveLiving(p_o, predicted);
        // Handlers may have deleted it.
        if (p_o)
            p_o->stepPath();
        if (p_o)
            p_o->stepAcceleration();
        if (p_o)
            p_o->stepLife();
    }
}

void WorldManager::deleteMarked() {
    if (!isRefusedNow("deleteMarked", by_the_step))
        disposeMarked();
}

void WorldManager::draw() {
    if (isRefusedNow("draw", by_the_step))
        return;
    for (int altitude = 0; altitude <= MAX_ALTITUDE; ++altitude) {
        walked = scene_graph.getLayer(altitude);
        const ObjectWatch watch(walked);
        for (Object *p_o : walked) {
            if (!p_o)
                continue;
            // A view object's position is in the view, so its box in the world does not count.
            if (boxIntersectsBox(getWorldBox(p_o), view) || dynamic_cast<ViewObject *>(p_o))
                p_o->draw();
        }
    }
}

int WorldManager::setViewFollowing(Object *p_o) {
    if (p_o && !isLiving(p_o))
        return refuseDead("setViewFollowing", p_o);
    view_following = p_o;
    return 0;
}

void WorldManager::setBoundary(const Box &new_boundary) {
    boundary = new_boundary;
    scene_graph.setWorld(boundary);
}

void WorldManager::setView(const Box &new_view) {
    view = new_view;
    DisplayManager::getInstance().setOrigin(view.corner);
}

void WorldManager::setViewPosition(Vector centre) {
    setView(viewAround(centre, view, boundary));
}

void WorldManager::setViewSlack(Vector new_view_slack) {
    const auto out_of_range = [](float part) { return part < 0 || part > 1; };
    if (out_of_range(new_view_slack.x) || out_of_range(new_view_slack.y))
        logLine("WorldManager::setViewSlack(): Warning! view slack units out of range [0-1]");
    view_slack = new_view_slack;
}

} // namespace sv
