#include "support/trouble.h"

namespace test {

bool fallSilent(sv::platform::Socket /*socket*/) {
    return false;
}

Interruptions::Interruptions() = default;

Interruptions::~Interruptions() = default;

} // namespace test
