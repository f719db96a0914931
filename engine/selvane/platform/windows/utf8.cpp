#include "selvane/platform/windows/utf8.h"

#include <windows.h>

namespace sv::platform {

std::string toUtf8(std::wstring_view wide) {
    const int length = static_cast<int>(wide.size());
    const auto convert = [&](char *out, int size) {
        return WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, out, size, nullptr, nullptr);
    };
    std::string text(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
    convert(text.data(), static_cast<int>(text.size()));
    return text;
}

} // namespace sv::platform
