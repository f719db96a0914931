/// Text from the system's wide functions, for the sources of this folder.
#pragma once

#include <string>
#include <string_view>

namespace sv::platform {

/// A half of a surrogate pair on its own becomes U+FFFD.
std::string toUtf8(std::wstring_view wide);

} // namespace sv::platform
