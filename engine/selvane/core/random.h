/// Random numbers for games. They come from std::rand(), which the engine seeds with the
/// configuration's "random_seed" when it starts: with a seed of its own a game plays the same each
/// time. The numbers of one seed differ between Linux and Windows.
#pragma once

namespace sv {

/// One of the integers from `low` to `high`, both included.
int randomInt(int low, int high);

/// A number from `low` to `high`.
float randomFloat(float low, float high);

} // namespace sv
