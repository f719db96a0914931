/// SFML's keys and the engine's, and which of them are polled.
#pragma once

#include "selvane/core/Keyboard.h"

#include <span>

namespace sv {

/// Keys that follow each other in SFML's numbers and in the engine's.
struct KeyRun {
    int sfml = 0; ///< The first of them.
    Keyboard::Key engine = Keyboard::UNDEFINED_KEY;
    int count = 1;
};

/// The keys that give an event in every step while they are down, in the order of polling.
///
/// F11, F12 and Backspace are missing, and Num0 is there a second time, as BACKSPACE: a game's
/// players may have learnt to use either, so it stays.
std::span<const KeyRun> polledKeys();

/// REQUIRES: sfml_key is one of SFML's keys or its unknown one.
Keyboard::Key toEngineKey(int sfml_key);

/// The SFML key that arrives as `key`.
int toSfmlKey(Keyboard::Key key);

} // namespace sv
