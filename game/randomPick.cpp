#include "game/randomPick.h"

#include <algorithm>
#include <array>
#include <cstdlib>

int randomBelow(int limit) {
    return std::rand() % std::max(limit, 1);
}

// The orders below are not those of the enumerations. They decide which game a seed gives, and so
// they stay.

ShapeKind randomShapeKind() {
    constexpr std::array order{ShapeKind::CIRCLE, ShapeKind::SQUARE, ShapeKind::TRIANGLE};
    return order.at(static_cast<std::size_t>(randomBelow(static_cast<int>(order.size()))));
}

ShapeColor randomShapeColor() {
    constexpr std::array order{ShapeColor::RED, ShapeColor::BLUE, ShapeColor::YELLOW};
    return order.at(static_cast<std::size_t>(randomBelow(static_cast<int>(order.size()))));
}
