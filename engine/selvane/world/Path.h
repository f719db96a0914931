/// The waypoints that an object follows, in cells of the world.
#pragma once

#include "selvane/core/Vector.h"

#include <vector>

namespace sv {

struct Path {
    std::vector<Vector> waypoints; ///< The next one first.
    int path_index = 0;            ///< For games; the engine only copies it.
};

} // namespace sv
