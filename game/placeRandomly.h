/// The first place of what is about to be shown elsewhere: random, free, and out of sight.
#pragma once

namespace sv {
class Object;
}

/// Puts the object a random way right of the world's boundary, clear of what is solid there. The
/// last four rows of the boundary's height are added at the top instead.
void placeRandomly(sv::Object *p_object);
