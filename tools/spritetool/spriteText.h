/// Sprites as the text of a file, in either format.
#pragma once

#include "selvane/core/Color.h"
#include "selvane/resources/Sprite.h"

#include <optional>
#include <string>
#include <vector>

namespace spritetool {

enum class Format { SIMPLE, ROBUST };

/// Without the colours that cells have of their own.
std::string textOf(const sv::Sprite &sprite, Format format);

/// The rows of a frame, without line ends.
std::vector<std::string> rowsOf(const sv::Frame &frame);

/// The colour of a cell, counted from 0 by rows, if it has one of its own.
std::optional<sv::Rgb> colorOf(const sv::Frame &frame, int cell);
bool hasCellColors(const sv::Sprite &sprite);

} // namespace spritetool
