#include "sounds/Waveform.h"

#include <algorithm>
#include <cstdlib>

namespace sounds {

namespace {

constexpr int TOP_OCTAVE = 8;
// Millihertz from c8 to b8.
constexpr std::array<std::uint64_t, 12> top_frequencies = {4186009, 4434922, 4698636, 4978032,
                                                           5274041, 5587652, 5919911, 6271927,
                                                           6644875, 7040000, 7458620, 7902133};
// Overtones above 8 kHz sound shrill.
constexpr std::uint64_t HIGHEST_STEP = (std::uint64_t{8000} << 32) / SAMPLES_PER_SECOND;
constexpr int FULL = 32767;

} // namespace

Phase phaseStep(int pitch) {
    const std::uint64_t millihertz = top_frequencies[static_cast<std::size_t>(pitch % 12)];
    const std::uint64_t step = (millihertz << 32) / (std::uint64_t{SAMPLES_PER_SECOND} * 1000);
    return static_cast<Phase>(step >> (TOP_OCTAVE - pitch / 12));
}

int sine(Phase phase) {
    const bool is_negative = (phase >> 31) != 0;
    std::int64_t x = phase & 0x7FFFFFFF; // The second quarter mirrors the first.
    x = std::min(x, (std::int64_t{1} << 31) - x);
    x >>= 15; // 2^15 is a quarter of a turn.
    // x (a - x^2 (b - x^2 c)), with 0 at 0, 1 at 1 and the right slopes at both; a, b, c times
    // 2^15.
    const std::int64_t square = x * x >> 15;
    const std::int64_t inner = 21024 - (square * 2320 >> 15);
    const std::int64_t value = x * (51472 - (square * inner >> 15)) >> 15;
    const int result = static_cast<int>(std::min<std::int64_t>(value, FULL));
    return is_negative ? -result : result;
}

Waveform::Waveform(const Harmonics &harmonics, Phase phase_step, bool is_mellow) {
    constexpr int size = 1 << INDEX_BITS;
    std::array<std::int64_t, size> sums{};
    for (std::uint32_t number = 1; number <= harmonics.size(); ++number) {
        if (number > 1 && std::uint64_t{phase_step} * number > HIGHEST_STEP)
            break;
        // Scaled by 1000, so that a weakened harmonic keeps its precision.
        const int strength =
            harmonics[number - 1] * 1000 / (is_mellow ? static_cast<int>(number) : 1);
        for (std::uint32_t i = 0; i < size; ++i)
            sums[i] += std::int64_t{strength} * sine((i << (32 - INDEX_BITS)) * number);
    }
    std::int64_t peak = 1;
    for (const std::int64_t sum : sums)
        peak = std::max(peak, std::abs(sum));
    for (std::size_t i = 0; i < size; ++i)
        values[i] = static_cast<int>(sums[i] * FULL / peak);
    values[size] = values[0];
}

int Waveform::at(Phase phase) const {
    const std::size_t index = phase >> (32 - INDEX_BITS);
    const int between = static_cast<int>(phase >> (32 - INDEX_BITS - 10) & 0x3FF);
    return values[index] + ((values[index + 1] - values[index]) * between >> 10);
}

} // namespace sounds
