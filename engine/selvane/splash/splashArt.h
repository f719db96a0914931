/// The pictures of the title sequence, as sprites made in memory.
#pragma once

#include <memory>

namespace sv {

class Sprite;

/// The engine's name, 47 x 8: slanted, then upright.
std::unique_ptr<Sprite> makeBanner();

/// The creature in flight, 11 x 7, its wings spread and folded in turn.
std::unique_ptr<Sprite> makeFlyingCreature();

/// The creature on the ground, 9 x 6.
std::unique_ptr<Sprite> makeLandedCreature();

} // namespace sv
