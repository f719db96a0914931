#include "selvane/world/geometry.h"

#include "selvane/core/LogManager.h"
#include "selvane/world/Object.h"

#include <algorithm>
#include <array>

namespace sv {

namespace {

/// The last position on the way along `velocity` at which the mover does not touch the obstacle.
Vector lastFreePosition(const Box &box, Vector position, Vector velocity, const Box &obstacle) {
    constexpr int iterations = 7;
    Vector free = position;
    float t = 0.5F;
    float step = 0.5F;
    Vector w = velocity;
    for (int i = 0; i < iterations; ++i, step *= 0.5F) {
        // Scales what the passes before have left, unlike a bisection: a way that is free is gone
        // further and further, and a hit at once keeps the mover at its start for good. On which
        // side a fast mover slides depends on it.
        w = w * t;
        const Vector candidate = position + w;
        if (boxIntersectsBox(boxAt(box, candidate), obstacle)) {
            t -= step;
        } else {
            free = candidate;
            t += step;
        }
    }
    return free;
}

/// `value` moved by as much as it takes to bring `position` between `low` and `high`.
float follow(float value, float low, float high, float position) {
    if (low > position)
        return value - (low - position);
    if (position > high)
        return value + (position - high);
    return value;
}

} // namespace

Box getWorldBox(const Object *p_o) {
    return boxAt(p_o->getBox(), p_o->getPosition());
}

Box getWorldBox(const Object *p_o, Vector where) {
    return boxAt(p_o->getBox(), where);
}

Vector getNormal(const Box &box, Vector position, Vector velocity, const Box &obstacle) {
    // The sides before the corners: a mover that reaches into both regions is at the side.
    constexpr std::array<Vector, 8> normals{
        {{0, -1}, {0, 1}, {-1, 0}, {1, 0}, {-1, -1}, {1, -1}, {-1, 1}, {1, 1}}};
    const Box mover = boxAt(box, lastFreePosition(box, position, velocity, obstacle));
    for (const Vector normal : normals) {
        const Vector beside{normal.x * obstacle.horizontal, normal.y * obstacle.vertical};
        if (boxIntersectsBox(mover, boxAt(obstacle, beside)))
            return normal;
    }
    logLine("getNormal(): collision not detected. Returning (0,0).");
    return {0, 0};
}

Vector getNormal(const Object *p_mover, const Object *p_obstacle) {
    return getNormal(p_mover->getBox(), p_mover->getPosition(), p_mover->getVelocity(),
                     getWorldBox(p_obstacle));
}

Box viewAround(Vector centre, const Box &view, const Box &boundary) {
    Vector corner{centre.x - view.horizontal * 0.5F, centre.y - view.vertical * 0.5F};
    if (corner.x + view.horizontal > boundary.horizontal)
        corner.x = boundary.horizontal - view.horizontal;
    if (corner.y + view.vertical > boundary.vertical)
        corner.y = boundary.vertical - view.vertical;
    return {{std::max(0.0F, corner.x), std::max(0.0F, corner.y)}, view.horizontal, view.vertical};
}

Vector followedCentre(const Box &view, Vector slack, Vector position) {
    const Vector centre{view.corner.x + view.horizontal * 0.5F,
                        view.corner.y + view.vertical * 0.5F};
    const float x_reach = view.horizontal * slack.x * 0.5F;
    const float y_reach = view.vertical * slack.y * 0.5F;
    return {follow(centre.x, centre.x - x_reach, centre.x + x_reach, position.x),
            follow(centre.y, centre.y - y_reach, centre.y + y_reach, position.y)};
}

} // namespace sv
