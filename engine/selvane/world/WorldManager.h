/// The world: moves its objects once a step and delivers their collisions, draws what the view
/// shows, and deletes what was marked for it, at the end of the step. It delivers every event type
/// that no other manager does.
///
/// Only the world deletes objects: those marked, and the rest at its shut-down. Objects that were
/// not made by `new` are taken out of its lists instead. Pointers to objects that are gone are
/// refused with a line in the log. So are shutDown(), deleteMarked(), update() and draw() while a
/// handler, a draw() or a destructor of an object runs. Game-loop thread only.
#pragma once

#include "selvane/core/Box.h"
#include "selvane/core/Manager.h"
#include "selvane/core/ObjectList.h"
#include "selvane/core/Vector.h"
#include "selvane/world/LivingObjects.h"
#include "selvane/world/SceneGraph.h"

#include <string>

namespace sv {

class WorldManager : public Manager {
  public:
    static WorldManager &getInstance();

    /// False, with a line in the log, for the types of other managers, and for "sv-collision" and
    /// "sv-out", which objects get without registering.
    bool isValid(const std::string &event_type) const override;

    /// Boundary and view are as large as the window while the game manager is started, otherwise of
    /// size 0. 0, or -1.
    int startUp() override;

    /// Deletes every object. The interests of those that are only taken out stay.
    void shutDown() override;

    /// The active objects, and with `include_inactive` the inactive ones behind them.
    ObjectList getAllObjects(bool include_inactive = false) const;
    ObjectList objectsOfType(const std::string &object_type) const;

    /// The solid objects that `p_o`, placed at `where`, would touch.
    ObjectList getCollisions(const Object *p_o, Vector where) const;

    /// Whether that is an object, made and not yet destroyed. The pointer may be dead: see
    /// LivingObjects.
    bool isLiving(const Object *p_o) const { return living.contains(p_o); }

    /// Deletes the object once at the end of the update, however often it is marked; until then it
    /// moves and collides. 0, or -1 if it is not a living object, or without memory; then it lives
    /// until the shut-down.
    int markForDelete(Object *p_o);
    int markForDelete(const ObjectList &list);

    /// Marks the object and makes it inactive at once: from now on it neither moves nor collides,
    /// is not drawn, and gets no events. 0, or -1 as markForDelete().
    int retire(Object *p_o);

    /// Retires every object, inactive ones too, but not those in `keep`: for a new scene.
    void retireAll(const ObjectList &keep = {});

    /// While it is paused nothing moves, no animation goes on, and no life span runs; objects are
    /// drawn, events are sent, and what is marked is deleted. Each start ends the pause.
    void setPaused(bool new_is_paused = true);
    bool isPaused() const { return is_paused; }

    /// Moves an object to `where`, in cells, with "sv-collision" events to it and to what it
    /// touches, "sv-out" when it leaves the world, and the view if it follows. 0, or -1 if a
    /// collision stops it, if it is not a living object, or if `where` is not finite. For objects
    /// that avoid collisions see Object::setAvoidCollisions().
    ///
    /// The move ends with setPosition(), which overwrites a position that a handler has set
    /// meanwhile. Moves made from handlers nest at most NestingLimit::MOST deep.
    int moveObject(Object *p_o, Vector where);

    /// The extent of the world. The view assumes its corner to be (0, 0).
    Box getBoundary() const { return boundary; }
    void setBoundary(const Box &new_boundary);

    /// The part of the world that the window shows.
    Box getView() const { return view; }
    void setView(const Box &new_view);

    /// Centres the view on a position, as far as the boundary allows.
    void setViewPosition(Vector centre);

    /// The part of the view, 0 to 1 on each axis and around its centre, in which a followed object
    /// moves without moving the view. Default: a third. Values out of range get a warning and are
    /// stored.
    void setViewSlack(Vector new_view_slack);
    Vector getViewSlack() const { return view_slack; }

    /// The object that the view follows, until it leaves the world; null for none. 0, or -1 if it
    /// is not a living object.
    int setViewFollowing(Object *p_o);

    /// Brings an object into the world that was made while the manager was not started, or removed.
    /// Outside, an object is neither moved nor drawn; it can be changed and still gets the events
    /// that it registered for. 0, or -1.
    int insertObject(Object *p_o);

    /// Takes an object out of the world and of every path search. 0, or -1.
    int removeObject(Object *p_o);

    // Called by the engine.

    /// One step of the world. Objects made during it move from the next one on.
    void update();

    /// Draws what the view shows, lower altitudes first.
    void draw();

    /// Deletes what is marked, and what destructors mark meanwhile; objects that they make wait for
    /// the next call. update() ends with it; call it between two runs of the loop.
    void deleteMarked();

    /// The window in cells, which boundary and view are set to at each start; empty for none.
    void setWindow(const Box &new_window) { window = new_window; }

    /// Sets boundary and view to the window, with a slack of a third.
    void fitToWindow();

    void reset() override;

    /// By the constructor of an object, and by its destructor.
    void objectCreated(Object *p_o);
    void objectDestroyed(Object *p_o);

    SceneGraph &getSceneGraph() { return scene_graph; }

  private:
    WorldManager();

    static int refuseDead(const char *operation, const Object *p_o);
    void warnMadeEarly();
    void warnDeletedInStep(const Object *p_o);
    void warnDetached(const Object *p_o);
    void forget(const Object *p_o);
    void dispose(Object *p_o);
    void detach(Object *p_o);
    void disposeMarked();
    void moveAll();
    int moveLiving(Object *p_o, Vector where);
    bool resolveCollisions(Object *const &p_o, Vector &where);
    bool resolveTouched(Object *const &p_o, Vector &where);
    bool slide(const Object *p_o, ObjectList &list, Vector &where) const;

    SceneGraph scene_graph;
    ObjectList deletions; // Marked in this step.
    ObjectList touched;   // What a move collides with, kept for its memory.
    ObjectList walked;    // What update() or draw() walks through, kept for its memory.
    Object *view_following = nullptr;
    Box boundary;
    Box view;
    Vector view_slack;
    Box window; // In cells; empty while the game manager is not started.
    LivingObjects living;
    bool is_paused = false;
    bool is_stopping = false;
    bool is_disposing = false;
    // Each warning is logged once: its cause may recur in every step.
    int early_id = 0; // Of the first object that was made while not started; 0: none.
    bool warned_made_early = false;
    bool warned_deleted_in_step = false;
    bool warned_detached = false;
};

} // namespace sv
