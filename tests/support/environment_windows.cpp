#include "support/environment.h"

#include <stdlib.h>

namespace test {

void setEnvironment(const std::string &name, const std::string &value) {
    _putenv_s(name.c_str(), value.c_str());
}

void clearEnvironment(const std::string &name) {
    _putenv_s(name.c_str(), ""); // Removes it.
}

} // namespace test
