/// The first place of what is about to be shown elsewhere: random, free, and out of sight.
#pragma once

namespace sv {
class Object;
}

/// Puts the object a random way right of the world's boundary, from three columns beyond it on, in
/// any of its rows but the top four, and clear of what is solid there. In a world without a fifth
/// row that is row 4.
void placeRandomly(sv::Object *p_object);
