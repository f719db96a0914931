/// Converts the text of the system's wide functions.
#pragma once

#include <string>
#include <string_view>

namespace sv::platform {

/// Half a surrogate pair becomes U+FFFD.
std::string toUtf8(std::wstring_view wide);

} // namespace sv::platform
