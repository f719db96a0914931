/// Files the objects of the world in plain lists: the active ones, the active ones of each type,
/// the active solid ones, the active visible ones of each altitude, and the inactive ones. An
/// object's setters ask here first and keep their value if refused.
///
/// Borrows the objects; the world manager owns the one scene graph. Game-loop thread only.
#pragma once

#include "selvane/core/Box.h"
#include "selvane/core/ObjectList.h"
#include "selvane/core/Vector.h"
#include "selvane/world/Object.h"
#include "selvane/world/SolidObjects.h"

#include <array>
#include <map>
#include <string>

namespace sv {

class SceneGraph {
  public:
    ObjectList activeObjects() const { return objects; }
    ObjectList inactiveObjects() const { return inactive_objects; }

    /// The first active object, or else the first inactive one; null if there is none.
    Object *firstObject() const;

    /// Empty, with a warning, outside 0 to MAX_ALTITUDE.
    ObjectList visibleObjects(int altitude) const;

    /// The active objects of that type; empty if there are none.
    ObjectList objectsOfType(const std::string &type) const;

    /// The other solid objects that the object's box would touch at `where`, in the order in which
    /// they became solid.
    ObjectList getCollisions(const Object *p_o, Vector where) const {
        ObjectList collisions;
        solid_objects.findTouched(p_o, where, collisions);
        return collisions;
    }

    /// Whether a hard object is in the way of the object at `where`. One that covers `goal` is not:
    /// the way leads to it.
    bool isBlocked(const Object *p_o, Vector where, Vector goal) const {
        return solid_objects.isBlocked(p_o, where, goal);
    }

    // Called by the engine.

    // The lists themselves, to be copied into memory that is there already.
    const ObjectList &getActive() const { return objects; }
    /// REQUIRES: an altitude in 0 to MAX_ALTITUDE.
    const ObjectList &getLayer(int altitude) const {
        return visible_objects[static_cast<std::size_t>(altitude)];
    }

    /// getCollisions() into memory that is there already.
    void findCollisions(const Object *p_o, Vector where, ObjectList &found) const {
        found.clear();
        solid_objects.findTouched(p_o, where, found);
    }

    /// Returns 0. The objects that are filed stay.
    int startUp();
    void shutDown();

    /// What the columns and rows of the grid divide, if the configuration asks for it.
    void setWorld(const Box &world) { solid_objects.setWorld(world); }

    /// For all scene graphs. While the game is over, objects that are not fully filed are expected,
    /// and most failures below are ignored.
    static void setGameOver(bool new_game_over) { is_game_over = new_game_over; }

    // The functions below return 0, or -1 with a line in the log; the lists then stay as far as the
    // operation got.

    int insertObject(Object *p_o);

    /// Removes the object from every list, also from those that it should not be in.
    int removeObject(Object *p_o);

    /// Removes an object from every list by its address: it may be dead.
    void purge(const Object *p_o);

    // The updates are called before the object's own field changes.

    int updateActive(Object *p_o, bool new_active);
    int updateVisible(Object *p_o, bool new_visible);

    /// Refuses an active object that is invisible: it is in no layer.
    int updateAltitude(Object *p_o, int new_altitude);
    int updateSolidness(Object *p_o, Solidness new_solidness);
    int updateType(Object *p_o, const std::string &new_type);

    /// Called also after the object has got another box. Returns 0.
    int updatePosition(Object *p_o, Vector new_position) {
        solid_objects.updatePosition(p_o, new_position);
        return 0;
    }

  private:
    static int checkStep(int result, const Object *p_o, const char *step, const char *list);
    int insertIntoType(Object *p_o, const std::string &type);
    int removeFromType(Object *p_o, const std::string &type);
    int deactivate(Object *p_o);
    int activate(Object *p_o);
    int remove(Object *p_o);
    ObjectList &layerOf(const Object *p_o);

    static bool is_game_over;

    ObjectList objects;
    SolidObjects solid_objects;
    std::array<ObjectList, MAX_ALTITUDE + 1> visible_objects;
    ObjectList inactive_objects;
    std::map<std::string, ObjectList> types; // None without objects.
};

} // namespace sv
