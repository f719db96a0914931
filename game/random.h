/// The game's random choices. They draw from the C library's generator, which the engine seeds when
/// it starts: a seed fixes the whole game, as long as nobody changes what is drawn, how often and
/// in which order.
#pragma once

#include "game/ShapeKind.h"

namespace sv {
class Object;
}

/// 0 to `limit` - 1; a limit below 1 counts as 1.
int randomBelow(int limit);

ShapeKind randomShapeKind();
ShapeColor randomShapeColor();

/// Moves the object to a random place out of sight, where it waits to be shown elsewhere: right of
/// the world's boundary, from three columns beyond it on, in any row but the top four (row 4 in a
/// world without a fifth row), and clear of solid objects.
void placeRandomly(sv::Object *object);
