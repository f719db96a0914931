/// What the harnesses share. A harness hands one input to one reader of the engine, looks at what
/// came out, and leaves the engine as it found it. It works in the folder it is started in.
#pragma once

#include "core/LogManager.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace fuzz {

/// The input as text, and the engine's log made ready: open, going nowhere. Every fourth length
/// writes the lines of every level up to `detail`, the others next to nothing, which is far faster.
inline std::string begin(const std::uint8_t *data, std::size_t size, int detail = 50) {
    sv::LogManager &log = sv::LogManager::getInstance();
    if (!log.isStarted()) {
        log.setLogTimeString(false);
        log.startUp();
    }
    log.setLogLevel(size % 4 == 0 ? detail : 0);
    return {reinterpret_cast<const char *>(data), size};
}

/// Ends the process, and with that tells the fuzzer of a fault, if what must hold does not.
inline void require(bool holds) {
    if (!holds)
        std::abort();
}

} // namespace fuzz
