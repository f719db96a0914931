/// The section "COLORS" of a robust sprite file, which gives the cells of each frame colours of
/// their own: rows of letters beside the rows of characters.
#pragma once

#include "selvane/resources/Sprite.h"

#include <istream>

namespace sv {

/// Reads the section and gives the frames their colours, if it comes next; if another line does,
/// that stays to be read. False, with log lines, if the section is not valid. REQUIRES: the sprite
/// has all its frames.
bool readColors(std::istream &file, Sprite &sprite);

} // namespace sv
