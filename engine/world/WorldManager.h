/// The world: moves its objects once a step and tells them of what they meet, draws what the view
/// shows, and deletes what was marked for it, at the end of the step and never sooner.
///
/// The only party that deletes objects: those marked, and all that are left at its shut-down.
/// Delivers every event type that no other manager does. Game-loop thread only.
#pragma once

#include "core/Box.h"
#include "core/Manager.h"
#include "core/ObjectList.h"
#include "core/Vector.h"
#include "world/SceneGraph.h"

#include <string>

namespace sv {

class WorldManager : public Manager {
  public:
    static WorldManager &getInstance();

    /// False, with a line in the log, for the types of other managers, and for "sv-collision" and
    /// "sv-out", which objects get without asking.
    bool isValid(const std::string &event_type) const override;

    /// Begins with boundary, view and slack of size 0. 0, or -1.
    int startUp() override;

    /// Deletes every object.
    void shutDown() override;

    // Called by objects when they are made and destroyed. While the manager is not started, an
    // object is not filed, and so neither moved nor drawn.

    int insertObject(Object *p_o);

    /// Forgets the object wherever the world or a path search may have kept it.
    int removeObject(Object *p_o);

    /// The active objects, and with `include_inactive` the inactive ones behind them.
    ObjectList getAllObjects(bool include_inactive = false) const;
    ObjectList objectsOfType(const std::string &object_type) const;

    /// The solid objects that `p_o`, placed at `where`, would touch.
    ObjectList getCollisions(const Object *p_o, Vector where) const;

    SceneGraph &getSceneGraph() { return scene_graph; }

    /// The object lives on until the end of the update, and is deleted once however often it is
    /// marked. 0, or -1 if it could not be remembered; then it lives until the shut-down.
    int markForDelete(Object *p_o);
    int markForDelete(const ObjectList &list);

    /// Moves an object to `where`, in cells, telling it and what it touches of their collision,
    /// telling it when it has left the world, and taking the view along if it follows. 0, or -1 if
    /// a collision keeps it where it is.
    int moveObject(Object *p_o, Vector where);

    /// Deletes what is marked, and what destructors mark meanwhile. Every update ends with it; for
    /// the time between two runs of the loop. REQUIRES: no object is in the middle of something.
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
    void setView(const Box &new_view) { view = new_view; }

    /// Centres the view on a position, as far as the boundary allows.
    void setViewPosition(Vector centre);

    /// The part of the view, 0 to 1 on each axis and around its centre, in which a followed object
    /// moves without moving the view. A value out of range is warned of and stored.
    void setViewSlack(Vector new_view_slack);
    Vector getViewSlack() const { return view_slack; }

    /// The object that the view follows; null for none. Forgotten when it leaves the world.
    void setViewFollowing(Object *p_o) { view_following = p_o; }

  private:
    WorldManager();

    bool resolveCollisions(Object *p_o, Vector &where) const;

    SceneGraph scene_graph;
    ObjectList deletions; // Marked in this step.
    Object *view_following = nullptr;
    Box boundary;
    Box view;
    Vector view_slack;
};

} // namespace sv
