/// The world: moves its objects once a step and tells them of what they meet, draws what the view
/// shows, and deletes what was marked for it, at the end of the step and never sooner.
///
/// The only party that deletes objects: those marked, and all that are left at its shut-down. One
/// that was not made by `new` it takes out of its lists instead, and says so once.
///
/// It knows every object that lives by its address: a pointer to one that is gone is refused with
/// a line in the log. From a handler, a draw() or a destructor of an object, shutDown(),
/// deleteMarked(), update() and draw() are refused likewise: they would pull the world away from
/// under the step that runs. Delivers every event type that no other manager does. Game-loop
/// thread only.
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
    /// "sv-out", which objects get without asking.
    bool isValid(const std::string &event_type) const override;

    /// Begins with a boundary and a view as large as the window while the game manager is started,
    /// or else of size 0. 0, or -1.
    int startUp() override;

    /// Deletes every object. The interests of those that are only taken out stay.
    void shutDown() override;

    // Called by objects when they are made and destroyed. While the manager is not started, an
    // object is not filed, and so neither moved nor drawn: it stays so until a game inserts it. Its
    // setters store, and the events that it registers for reach it.

    int insertObject(Object *p_o);

    /// Forgets the object wherever the world or a path search may have kept it.
    int removeObject(Object *p_o);

    /// The first and the last thing that the world hears of an object: inserts and removes it, too.
    void greet(Object *p_o);
    void bury(Object *p_o);

    /// Whether that is an object, made and not yet destroyed. The pointer may be dead: see
    /// LivingObjects.
    bool isLiving(const Object *p_o) const { return living.contains(p_o); }

    // Called by the game manager, so that the world need not know the display.

    /// The window in cells, of which boundary and view are at each start to come; empty for none.
    void setWindow(const Box &new_window) { window = new_window; }

    /// Makes boundary and view as large as the window, with a slack of a third.
    void fitToWindow();

    /// The active objects, and with `include_inactive` the inactive ones behind them.
    ObjectList getAllObjects(bool include_inactive = false) const;
    ObjectList objectsOfType(const std::string &object_type) const;

    /// The solid objects that `p_o`, placed at `where`, would touch.
    ObjectList getCollisions(const Object *p_o, Vector where) const;

    SceneGraph &getSceneGraph() { return scene_graph; }

    /// The object lives on until the end of the update, moves and collides, and is deleted once
    /// however often it is marked. 0, or -1 if it is no living object, or could not be remembered;
    /// then it lives until the shut-down.
    int markForDelete(Object *p_o);
    int markForDelete(const ObjectList &list);

    /// Moves an object to `where`, in cells, telling it and what it touches of their collision,
    /// telling it when it has left the world, and taking the view along if it follows. 0, or -1 if
    /// a collision keeps it where it is, if it is no living object, or if `where` is not finite.
    /// One that avoids collisions is told of none with hard objects, see
    /// Object::setAvoidCollisions().
    ///
    /// The move ends with its setPosition(): a position that a handler sets in the middle of it is
    /// overwritten. Handlers that move objects from within moves do so NestingLimit::MOST deep at
    /// most.
    int moveObject(Object *p_o, Vector where);

    /// Deletes what is marked, and what destructors mark meanwhile; what they make and mark waits
    /// for the next call. Every update ends with it; for the time between two runs of the loop.
    void deleteMarked();

    /// One step of the world. Objects made during it move from the next one on.
    void update();

    /// Draws what the view shows, lower altitudes first.
    void draw();

    /// The extent of the world. Its corner is taken to be (0, 0) where the view is kept inside it.
    Box getBoundary() const { return boundary; }
    void setBoundary(const Box &new_boundary) { boundary = new_boundary; }

    /// The part of the world that the window shows.
    Box getView() const { return view; }
    void setView(const Box &new_view);

    /// Centres the view on a position, as far as the boundary allows.
    void setViewPosition(Vector centre);

    /// The part of the view, 0 to 1 on each axis and around its centre, in which a followed object
    /// moves without moving the view. A value out of range is warned of and stored.
    void setViewSlack(Vector new_view_slack);
    Vector getViewSlack() const { return view_slack; }

    /// The object that the view follows; null for none. Forgotten when it leaves the world. 0, or
    /// -1 if it is no living object.
    int setViewFollowing(Object *p_o);

  private:
    WorldManager();

    static int refuseDead(const char *operation, const Object *p_o);
    void warnOfEarly();
    void warnOfDelete(const Object *p_o);
    void warnOfTakingOut(const Object *p_o);
    void forget(const Object *p_o);
    void dispose(Object *p_o);
    void takeOut(Object *p_o);
    void disposeOfMarked();
    void moveAll();
    int moveLiving(Object *p_o, Vector where);
    bool resolveCollisions(Object *const &p_o, Vector &where) const;

    SceneGraph scene_graph;
    ObjectList deletions; // Marked in this step.
    Object *view_following = nullptr;
    Box boundary;
    Box view;
    Vector view_slack;
    Box window; // In cells; empty while the game manager is not started.
    LivingObjects living;
    bool is_stopping = false;
    bool is_disposing = false;
    // Each warning is said once: its cause may come again in every step.
    int early_id = 0; // Of the first object that was made while not started, until that is said.
    bool early_is_said = false;
    bool delete_is_said = false;
    bool taking_out_is_said = false;
};

} // namespace sv
