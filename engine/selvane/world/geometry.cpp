#include "selvane/world/geometry.h"

#include "selvane/core/LogManager.h"

#include <algorithm>
#include <array>

namespace sv {

namespace {

/// The last position along `velocity` at which the mover does not touch the obstacle.
Vector lastFreePosition(const Box &box, Vector position, Vector velocity, const Box &obstacle) {
    constexpr int iterations = 7;
    Vector free = position;
    float t = 0.5F;
    float step = 0.5F;
    Vector w = velocity;
    for (int i = 0; i < iterations; ++i, step *= 0.5F) {
        // Scales what the earlier passes have left, unlike a bisection: a free mover goes further
        // with each pass, and a hit in the first pass leaves it at its start. The side on which
        // fast movers slide depends on it.
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

Vector getNormal(const Box &box, Vector position, Vector velocity, const Box &obstacle) {
    // Sides before corners: a mover that reaches into both regions is at the side.
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

Vector getNormal(const Object *mover, const Object *obstacle) {
    return getNormal(mover->getBox(), mover->getPosition(), mover->getVelocity(),
                     getWorldBox(obstacle));
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
