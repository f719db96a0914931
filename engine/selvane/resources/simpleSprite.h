/// The simple sprite file format: five header lines (frames, width, height, slowdown, colour) and
/// then the rows of one frame after the other, with nothing between them and nothing after them.
#pragma once

#include "selvane/resources/Sprite.h"

#include <istream>
#include <memory>

namespace sv {

/// Reads a sprite from the stream's position to its end; null, with log lines, if the file is not
/// valid. REQUIRES: line_number is 0.
std::unique_ptr<Sprite> loadSimpleSprite(std::istream &file);

} // namespace sv
