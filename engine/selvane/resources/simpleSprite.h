/// The simple sprite file format: five header lines (frames, width, height, slowdown, colour) and
/// then the rows of one frame after the other, with nothing between them and nothing behind.
#pragma once

#include "selvane/resources/Sprite.h"

#include <istream>
#include <memory>

namespace sv {

/// The sprite that the file holds, from where the stream stands to its end; null, with log lines,
/// if it does not hold one. REQUIRES: line_number is 0.
std::unique_ptr<Sprite> loadSimpleSprite(std::istream &file);

} // namespace sv
