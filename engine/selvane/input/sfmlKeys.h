/// What the windowing library's keys are in the engine, and which of them are polled.
#pragma once

#include "selvane/core/Keyboard.h"

#include <span>

namespace sv {

/// Keys that follow each other in the library's numbers and in the engine's.
struct KeyRun {
    int library = 0; ///< The first of them.
    Keyboard::Key engine = Keyboard::UNDEFINED_KEY;
    int count = 1;
};

/// The keys that give an event in every step while they are down, in the order of polling.
///
/// F11, F12 and Backspace are missing, and Num0 is there a second time, as BACKSPACE: a game's
/// players may have learnt to use either, so it stays.
std::span<const KeyRun> polledKeys();

/// REQUIRES: library_key is one of the library's keys or its unknown one.
Keyboard::Key toEngineKey(int library_key);

} // namespace sv
