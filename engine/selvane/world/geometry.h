/// The geometry of movement and of the view: functions of their arguments that need no world.
/// Positions and extents are in cells; x grows to the right, y downwards.
#pragma once

#include "selvane/core/Box.h"
#include "selvane/core/Vector.h"
#include "selvane/world/Object.h"

namespace sv {

/// A box relative to a position, moved to `where`.
constexpr Box boxAt(const Box &box, Vector where) {
    return {box.corner + where, box.horizontal, box.vertical};
}

/// An object's box in the world.
inline Box getWorldBox(const Object *p_o) {
    return boxAt(p_o->getBox(), p_o->getPosition());
}

/// An object's box in the world as if it stood at `where`.
inline Box getWorldBox(const Object *p_o, Vector where) {
    return boxAt(p_o->getBox(), where);
}

/// The side from which a mover touches an obstacle: (0, -1) from above, (0, 1) from below, (-1, 0)
/// from the left, (1, 0) from the right, both for a corner; a side wins over a corner. (0, 0), with
/// a line in the log, if it touches none.
///
/// `box` is the mover's, relative to its `position`; `velocity` is in cells a step; `obstacle` is
/// in the world.
Vector getNormal(const Box &box, Vector position, Vector velocity, const Box &obstacle);
Vector getNormal(const Object *mover, const Object *obstacle);

/// The view of that size centred on `centre`, kept inside a boundary whose corner is taken to be
/// (0, 0). A view larger than the boundary stays at its upper left corner.
Box viewAround(Vector centre, const Box &view, const Box &boundary);

/// The new centre of the view so that `position` is within the slack again: the part of the view, 0
/// to 1 on each axis and around its centre, in which the followed object does not move the view.
Vector followedCentre(const Box &view, Vector slack, Vector position);

} // namespace sv
