/// How the engine's values read in a failed expectation.
#pragma once

#include "selvane/core/Box.h"
#include "selvane/core/Vector.h"

#include <ostream>

namespace sv {

inline void PrintTo(Vector v, std::ostream *out) {
    *out << "(" << v.x << ", " << v.y << ")";
}

inline void PrintTo(const Box &box, std::ostream *out) {
    PrintTo(box.corner, out);
    *out << " " << box.horizontal << " x " << box.vertical;
}

} // namespace sv
