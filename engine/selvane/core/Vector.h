/// A 2-D position, velocity or size, in character cells: x grows to the right, y downwards.
#pragma once

#include <cmath>

namespace sv {

struct Vector {
    float x = 0;
    float y = 0;

    friend constexpr bool operator==(Vector, Vector) = default;

    constexpr Vector &operator+=(Vector other) { return *this = {x + other.x, y + other.y}; }
    constexpr Vector &operator-=(Vector other) { return *this = {x - other.x, y - other.y}; }
    constexpr Vector &operator*=(float factor) { return *this = {x * factor, y * factor}; }
    constexpr Vector &operator/=(float divisor) { return *this = {x / divisor, y / divisor}; }
};

constexpr Vector operator+(Vector a, Vector b) {
    return {a.x + b.x, a.y + b.y};
}

constexpr Vector operator-(Vector a, Vector b) {
    return {a.x - b.x, a.y - b.y};
}

constexpr Vector operator-(Vector v) {
    return {-v.x, -v.y};
}

constexpr Vector operator*(Vector v, float factor) {
    return {v.x * factor, v.y * factor};
}

constexpr Vector operator*(float factor, Vector v) {
    return v * factor;
}

constexpr Vector operator/(Vector v, float divisor) {
    return {v.x / divisor, v.y / divisor};
}

/// Whether neither component is infinite or NaN.
inline bool isFinite(Vector v) {
    return std::isfinite(v.x) && std::isfinite(v.y);
}

inline float length(Vector v) {
    const float square = v.x * v.x + v.y * v.y;
    // The root where the square fits into a float: hypot() may round differently, and recorded
    // games depend on the last bit.
    return std::isnormal(square) ? std::sqrt(square) : std::hypot(v.x, v.y);
}

/// The vector of length 1 in the direction of `v`; the zero vector stays zero.
inline Vector normalized(Vector v) {
    const float l = length(v);
    if (std::isnormal(l))
        return {v.x / l, v.y / l};
    // Too long or too short for a float's full precision, but not for a double's.
    const double d = std::hypot(double{v.x}, double{v.y});
    return d > 0 ? Vector{static_cast<float>(v.x / d), static_cast<float>(v.y / d)} : Vector{};
}

/// The Euclidean distance between two positions, in cells.
inline float distance(Vector a, Vector b) {
    return length(a - b);
}

} // namespace sv
