/// What a target can look like, and the words for it on the screens and in the sprites' labels.
#pragma once

#include <array>
#include <cstdint>
#include <string>

enum class ShapeKind : std::uint32_t { SQUARE = 0, TRIANGLE = 1, CIRCLE = 2 };

enum class ShapeColor : std::uint32_t { RED = 0, YELLOW = 1, BLUE = 2 };

inline std::string wordOf(ShapeKind kind) {
    constexpr std::array words{"square", "triangle", "circle"};
    return words.at(static_cast<std::size_t>(kind));
}

inline std::string wordOf(ShapeColor color) {
    constexpr std::array words{"red", "yellow", "blue"};
    return words.at(static_cast<std::size_t>(color));
}
