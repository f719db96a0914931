#include "support/limits.h"

namespace test {

bool allowNoMoreFiles() {
    return false;
}

void allowMoreFiles() {}

} // namespace test
