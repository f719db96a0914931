/// Sprites as the text of a file, in either format.
#pragma once

#include "selvane/resources/Sprite.h"

#include <string>

namespace spritetool {

enum class Format { SIMPLE, ROBUST };

std::string textOf(const sv::Sprite &sprite, Format format);

/// The rows of a frame, without line ends.
std::vector<std::string> rowsOf(const sv::Frame &frame);

} // namespace spritetool
