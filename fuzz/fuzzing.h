/// What the harnesses share. A harness hands one input to one reader of the engine, looks at what
/// came out, and leaves the engine as it found it. It works in the folder it is started in.
#pragma once

#include "selvane/core/LogManager.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <string>

namespace fuzz {

/// Ends the process, and with that tells the fuzzer of a fault, if what must hold does not.
inline void require(bool holds) {
    if (!holds)
        std::abort();
}

/// One input, from the beginning of its handling to the end, which must come within a second of
/// processor time.
class Input {
  public:
    /// Makes the engine's log ready: open, going nowhere. Every fourth length writes the lines of
    /// every level up to `detail`, the others next to nothing, which is far faster.
    Input(const std::uint8_t *data, std::size_t size, int detail = 50)
        : text(reinterpret_cast<const char *>(data), size) {
        sv::LogManager &log = sv::LogManager::getInstance();
        if (!log.isStarted()) {
            log.setLogTimeString(false);
            log.startUp();
        }
        log.setLogLevel(size % 4 == 0 ? detail : 0);
    }

    ~Input() { require(std::clock() - begin < CLOCKS_PER_SEC); }
    Input(const Input &) = delete;
    Input &operator=(const Input &) = delete;

    const std::string text;

  private:
    std::clock_t begin = std::clock();
};

} // namespace fuzz
