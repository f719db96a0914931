/// The robust sprite file format: a section "HEADER" of keys and values, a section "BODY" of
/// frames that each close with a line "end", perhaps a section "COLORS" with the colours of their
/// cells, and a section "FOOTER" with the version.
#pragma once

#include "selvane/resources/Sprite.h"

#include <istream>
#include <memory>

namespace sv {

/// Reads a sprite from the stream's position to the end of its footer; null, with log lines, if the
/// file is not valid. REQUIRES: line_number is 0.
///
/// Throws KeyWithoutValue for a line that is only a key, as matchLineInt() does.
std::unique_ptr<Sprite> loadRobustSprite(std::istream &file);

} // namespace sv
