/// An axis-aligned rectangle in character cells: its upper left corner and its extents. An
/// object's box is relative to the object's position.
#pragma once

#include "selvane/core/Vector.h"

namespace sv {

struct Box {
    Vector corner;
    float horizontal = 0;
    float vertical = 0;

    /// The default box of an object: a cell around its position, just too small to touch objects in
    /// the neighbouring cells.
    static constexpr Box cell() { return {{-0.5F, -0.5F}, 0.99F, 0.99F}; }

    friend constexpr bool operator==(const Box &, const Box &) = default;
};

/// Whether two boxes overlap on both axes. Edges included: boxes that only touch intersect.
constexpr bool boxIntersectsBox(const Box &a, const Box &b) {
    const bool x_overlaps = (b.corner.x <= a.corner.x && a.corner.x <= b.corner.x + b.horizontal) ||
                            (a.corner.x <= b.corner.x && b.corner.x <= a.corner.x + a.horizontal);
    const bool y_overlaps = (b.corner.y <= a.corner.y && a.corner.y <= b.corner.y + b.vertical) ||
                            (a.corner.y <= b.corner.y && b.corner.y <= a.corner.y + a.vertical);
    return x_overlaps && y_overlaps;
}

} // namespace sv
