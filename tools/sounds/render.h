/// Turns a piece into samples, and samples into the bytes of a file.
#pragma once

#include "sounds/Score.h"

#include <cstdint>
#include <string>
#include <vector>

namespace sounds {

/// The samples of a piece. Empty if a bar cannot be read: the reason is in `error`.
std::vector<std::int16_t> render(const Piece &piece, std::string &error);

/// A WAV file of one channel with 16 bits a sample.
std::string waveFile(const std::vector<std::int16_t> &samples);

} // namespace sounds
