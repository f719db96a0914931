#include "support/environment.h"

#include <cstdlib>

namespace test {

void setEnvironment(const std::string &name, const std::string &value) {
    setenv(name.c_str(), value.c_str(), 1);
}

void clearEnvironment(const std::string &name) {
    unsetenv(name.c_str());
}

} // namespace test
