/// From a piece to its samples, and to the bytes of its file.
#pragma once

#include "sounds/Score.h"

#include <cstdint>
#include <string>
#include <vector>

namespace sounds {

/// The samples of a piece. None if it cannot be played as it is written: the reason is in `error`.
std::vector<std::int16_t> render(const Piece &piece, std::string &error);

/// A WAV file of one channel with 16 bits a sample.
std::string waveFile(const std::vector<std::int16_t> &samples);

} // namespace sounds
