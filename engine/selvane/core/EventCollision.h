/// Sent to both objects of a collision, to the moving one first. Both get the same event.
#pragma once

#include "selvane/core/Event.h"
#include "selvane/core/Vector.h"

namespace sv {

class Object;

/// Borrows both objects; they live at least as long as the event.
class EventCollision : public Event {
  public:
    static constexpr const char *TYPE = COLLISION_EVENT;

    /// `moving` is the object that caused the collision, `hit` the one it moved into, `where` the
    /// position, in cells, that the moving object was trying to reach.
    EventCollision(Object *moving, Object *hit, Vector where)
        : Event(COLLISION_EVENT), pos(where), obj1(moving), obj2(hit) {}

    Object *getObject1() const { return obj1; }
    void setObject1(Object *new_obj1) { obj1 = new_obj1; }
    Object *getObject2() const { return obj2; }
    void setObject2(Object *new_obj2) { obj2 = new_obj2; }

    /// The object that `me` has collided with; null if `me` is neither of the two.
    Object *other(const Object *me) const {
        if (me == obj1)
            return obj2;
        return me == obj2 ? obj1 : nullptr;
    }

    Vector getPosition() const { return pos; }
    void setPosition(Vector new_pos) { pos = new_pos; }

  private:
    Vector pos;
    Object *obj1;
    Object *obj2;
};

} // namespace sv
