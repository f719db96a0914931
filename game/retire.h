/// Takes objects out of the game for good, at once as far as the player can tell: what is marked
/// for deletion still lives until the end of the step, and must not answer one more click.
#pragma once

#include "selvane/core/ObjectList.h"

namespace sv {
class Object;
}

/// Makes it inactive and marks it for deletion.
void retire(sv::Object *p_object);
void retire(const sv::ObjectList &objects);
