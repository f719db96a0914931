/// Files the objects of the world by what the world manager asks for: the active ones to move, the
/// solid ones to collide, the visible ones of each altitude to draw, the inactive ones, and those
/// of one type. Plain lists, no spatial index.
///
/// An active object is among the active ones and those of its type, among the solid ones if it is
/// solid, and among the visible ones of its altitude if it is visible; an inactive object is among
/// the inactive ones alone. An object's setters ask here first and keep their value if refused.
///
/// Borrows the objects; the world manager owns the one scene graph. Game-loop thread only.
#pragma once

#include "selvane/core/ObjectList.h"
#include "selvane/core/Vector.h"
#include "selvane/world/Object.h"

#include <array>
#include <map>
#include <string>

namespace sv {

class SceneGraph {
  public:
    /// 0. The objects that are filed stay.
    int startUp();
    void shutDown();

    /// Said by the game manager, so that the world need not know the loop; for all scene graphs.
    static void setGameOver(bool new_game_over) { is_game_over = new_game_over; }

    // What follows answers 0, or -1 with a line in the log. The lists are left as far as an
    // operation got. While the game is over, objects that were never filed whole are expected, and
    // most of their failures count for nothing.

    int insertObject(Object *p_o);

    /// Takes the object out of every list, also out of those that it should not be in.
    int removeObject(Object *p_o);

    /// Takes an object out of every list by its address alone: it need not live.
    void purge(const Object *p_o);

    // To be called before the object's own field changes.

    int updateActive(Object *p_o, bool new_active);
    int updateVisible(Object *p_o, bool new_visible);

    /// Refuses an active object that is invisible: it is in no layer that it could leave.
    int updateAltitude(Object *p_o, int new_altitude);
    int updateSolidness(Object *p_o, Solidness new_solidness);
    int updateType(Object *p_o, const std::string &new_type);

    /// Nothing is filed by position: 0.
    int updatePosition(Object *p_o, Vector new_position);

    ObjectList activeObjects() const { return objects; }
    ObjectList inactiveObjects() const { return inactive_objects; }

    /// An object that is filed, the active ones before the inactive; null when none is left.
    Object *firstObject() const;

    /// Empty, with a warning, if the altitude is none.
    ObjectList visibleObjects(int altitude) const;

    /// The active objects of that type; empty if there are none.
    ObjectList objectsOfType(const std::string &type) const;

    /// The solid objects other than `p_o` that its box, placed at `where`, touches, in the order in
    /// which they became solid.
    ObjectList getCollisions(const Object *p_o, Vector where) const;

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
    ObjectList solid_objects;
    std::array<ObjectList, MAX_ALTITUDE + 1> visible_objects;
    ObjectList inactive_objects;
    std::map<std::string, ObjectList> types; // Never one without objects.
};

} // namespace sv
