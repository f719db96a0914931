/// The environment variables of the test's own process.
#pragma once

#include <string>

namespace test {

void setEnvironment(const std::string &name, const std::string &value);
void clearEnvironment(const std::string &name);

} // namespace test
