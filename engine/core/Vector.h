/// A 2-D position, velocity or size, in character cells: x grows to the right, y downwards.
#pragma once

#include <cmath>

namespace sv {

struct Vector {
    float x = 0;
    float y = 0;

    friend constexpr bool operator==(Vector, Vector) = default;
};

constexpr Vector operator+(Vector a, Vector b) {
    return {a.x + b.x, a.y + b.y};
}

constexpr Vector operator-(Vector a, Vector b) {
    return {a.x - b.x, a.y - b.y};
}

constexpr Vector operator*(Vector v, float factor) {
    return {v.x * factor, v.y * factor};
}

/// Whether neither component is infinite or no number at all.
inline bool isFinite(Vector v) {
    return std::isfinite(v.x) && std::isfinite(v.y);
}

inline float length(Vector v) {
    return std::sqrt(v.x * v.x + v.y * v.y);
}

/// The vector of length 1 in the direction of `v`; the zero vector stays zero.
inline Vector normalized(Vector v) {
    const float l = length(v);
    return l > 0 ? Vector{v.x / l, v.y / l} : Vector{};
}

/// The Euclidean distance between two positions, in cells.
inline float distance(Vector a, Vector b) {
    return length(a - b);
}

} // namespace sv
