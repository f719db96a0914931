#include "selvane/platform/display.h"

#include <windows.h>

namespace sv::platform {

// A window of this system stays until its program ends.
void watchDisplay(const DisplayWatch & /*watch*/) {}

struct DisplayConnection {};

DisplayCheck::DisplayCheck() = default;

DisplayCheck::~DisplayCheck() = default;

const char *DisplayCheck::obstacle() const {
    return nullptr; // SFML reports a failure here itself and does not end the process.
}

// Keys of this system keep their Latin names.
bool DisplayCheck::hasLatinLetters() const {
    return true;
}

Room DisplayCheck::room() const {
    return {GetSystemMetrics(SM_CXFULLSCREEN), GetSystemMetrics(SM_CYFULLSCREEN)};
}

WindowWatch::WindowWatch(std::uintptr_t /*window*/) {}

WindowWatch::~WindowWatch() = default;

// This system keeps what was drawn.
bool WindowWatch::isUncovered() {
    return false;
}

} // namespace sv::platform
