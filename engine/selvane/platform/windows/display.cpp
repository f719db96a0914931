#include "selvane/platform/display.h"

namespace sv::platform {

struct DisplayCheck::Connection {};

DisplayCheck::DisplayCheck() = default;

DisplayCheck::~DisplayCheck() = default;

const char *DisplayCheck::obstacle() const {
    return nullptr; // The library says for itself when it gets no window here.
}

} // namespace sv::platform
