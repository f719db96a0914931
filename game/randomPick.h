/// Draws from the C library's generator, which the engine seeds when it starts: a seed fixes the
/// whole game, as long as nobody changes what is drawn, how often and in which order.
#pragma once

#include "game/ShapeKind.h"

/// 0 to `limit` - 1; a limit below 1 counts as 1.
int randomBelow(int limit);

ShapeKind randomShapeKind();
ShapeColor randomShapeColor();
