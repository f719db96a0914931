/// Reads a sprite file, in whichever format it is.
///
/// What is wrong with it is in the log, and from openSprite() to the next one in sprite_fault.
#pragma once

#include "selvane/resources/Sprite.h"

#include <fstream>
#include <memory>
#include <string>

namespace sv {

/// The file at `path`, which messages call `filename`; not open if there is no such file, or if it
/// is too large.
std::ifstream openSprite(const std::string &path, const std::string &filename);

/// Reads a sprite; its first line shows in which format it is. Null, with log lines, if the file is
/// not valid.
std::unique_ptr<Sprite> readSprite(std::istream &file, const std::string &filename);

} // namespace sv
