#include "selvane/world/geometry.h"

#include "support/EngineTest.h"
#include "support/printing.h"

#include <cmath>
#include <limits>

namespace sv {
namespace {

TEST(Geometry, vectors_of_any_length_have_a_direction) {
    constexpr float most = std::numeric_limits<float>::max();
    constexpr float least = std::numeric_limits<float>::denorm_min();
    const float diagonal = std::sqrt(0.5F);
    const struct {
        Vector v;
        float length;
        Vector direction;
    } cases[] = {
        {{0, 0}, 0, {0, 0}},
        {{3, -4}, 5, {0.6F, -0.8F}},
        {{0.1F, 0.2F}, 0.22360681F, {0.1F / 0.22360681F, 0.2F / 0.22360681F}}, // To the last bit.
        {{-0x3p100F, 0x4p100F}, 0x5p100F, {-0.6F, 0.8F}},
        {{0x3p-100F, 0x4p-100F}, 0x5p-100F, {0.6F, 0.8F}},
        {{most, most}, std::numeric_limits<float>::infinity(), {diagonal, diagonal}},
        {{least, -least}, least, {diagonal, -diagonal}},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(length(c.v), c.length);
        EXPECT_EQ(normalized(c.v), c.direction) << "of length " << c.length;
    }
}

TEST(Geometry, boxes_that_share_an_edge_or_a_corner_intersect) {
    const Box box{{10, 10}, 4, 2};
    const struct {
        const char *where;
        Box other;
        bool intersect;
    } cases[] = {
        {"inside", {{11, 10.5F}, 1, 1}, true},
        {"crossing it like a plus", {{11, 0}, 1, 100}, true},
        {"at the left edge", {{8, 10}, 2, 2}, true},
        {"at the right edge", {{14, 10}, 2, 2}, true},
        {"at the lower right corner", {{14, 12}, 2, 2}, true},
        {"just right of it", {{14.001F, 10}, 2, 2}, false},
        {"just above", {{10, 7.999F}, 4, 2}, false},
        {"beside it in x alone", {{20, 10}, 4, 2}, false},
        {"a point at its corner", {{14, 12}, 0, 0}, true},
        {"nowhere", {{std::numeric_limits<float>::quiet_NaN(), 10}, 4, 2}, false},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(boxIntersectsBox(box, c.other), c.intersect) << c.where;
        EXPECT_EQ(boxIntersectsBox(c.other, box), c.intersect) << c.where << ", the other way";
    }
}

TEST(Geometry, the_normal_tells_the_side_and_a_side_wins_over_a_corner) {
    const Box cell{{-0.5F, -0.5F}, 0.99F, 0.99F};
    const Box wall{{10, 10}, 4, 2};
    const struct {
        const char *from;
        Vector position;
        Vector velocity;
        Vector normal;
    } cases[] = {
        {"above", {12, 9}, {0, 1}, {0, -1}},
        {"below", {12, 13}, {0, -1}, {0, 1}},
        {"the left", {9, 11}, {1, 0}, {-1, 0}},
        {"the right", {15, 11}, {-1, 0}, {1, 0}},
        {"the upper left corner", {9, 9}, {2, 2}, {-1, -1}},
        {"the upper right corner", {15, 9}, {-2, 2}, {1, -1}},
        {"the lower left corner", {9, 13}, {2, -2}, {-1, 1}},
        {"the lower right corner", {15, 13}, {-2, -2}, {1, 1}},
        {"above, reaching over the left edge", {9.8F, 9}, {0, 1}, {0, -1}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(getNormal(cell, c.position, c.velocity, wall), c.normal) << "from " << c.from;
}

using GeometryLog = test::EngineTest;

// Each pass scales what the passes before it have left. The first mover reaches 8, 8, 10, 11.25,
// 11.95, 12.3 and 12.9 cells along its way, and so is found behind the wall; the second is hit at
// 11 and then never leaves its start. A bisection would have found both before the wall.
TEST_F(GeometryLog, the_search_for_the_last_free_place_compounds) {
    startLog();
    const Box point{{0, 0}, 0, 0};
    const Box wall{{10, -1}, 2, 2};
    EXPECT_EQ(getNormal(point, {0, 0}, {16, 0}, wall), (Vector{1, 0}));
    EXPECT_EQ(getNormal(point, {0, 0}, {22, 0}, wall), (Vector{0, 0}));
    EXPECT_EQ(logCount("getNormal(): collision not detected. Returning (0,0)."), 1);
}

TEST(Geometry, the_view_stays_inside_the_boundary) {
    const struct {
        const char *what;
        Vector centre;
        Box view;
        Vector corner;
    } cases[] = {
        {"in the middle", {50, 50}, {{0, 0}, 20, 10}, {40, 45}},
        {"at the far corner", {99, 99}, {{0, 0}, 20, 10}, {80, 90}},
        {"at the near corner", {1, 1}, {{5, 5}, 20, 10}, {0, 0}},
        {"larger than the boundary", {50, 50}, {{3, 3}, 200, 300}, {0, 0}},
    };
    for (const auto &c : cases) {
        const Box view = viewAround(c.centre, c.view, {{0, 0}, 100, 100});
        EXPECT_EQ(view.corner, c.corner) << c.what;
        EXPECT_EQ(view.horizontal, c.view.horizontal) << c.what;
        EXPECT_EQ(view.vertical, c.view.vertical) << c.what;
    }
}

} // namespace
} // namespace sv
