#include "selvane/platform/display.h"

namespace sv::platform {

struct DisplayCheck::Connection {};

DisplayCheck::DisplayCheck() = default;

DisplayCheck::~DisplayCheck() = default;

const char *DisplayCheck::obstacle() const {
    return nullptr; // SFML reports a failure here itself and does not end the process.
}

} // namespace sv::platform
