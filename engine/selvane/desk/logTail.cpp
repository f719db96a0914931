#include "selvane/desk/logTail.h"

#include "selvane/core/LogManager.h"
#include "selvane/core/text.h"
#include "selvane/platform/system.h"

#include <algorithm>
#include <fstream>

namespace sv {

namespace {

constexpr std::streamoff tail_bytes = 2048;

} // namespace

std::vector<std::string> lastLogLines(std::size_t most) {
    const std::string &name = LogManager::getInstance().getFileName();
    if (!platform::isFile(name))
        return {};
    std::ifstream file(name, std::ios::binary);
    file.seekg(0, std::ios::end);
    file.seekg(std::max<std::streamoff>(file.tellg() - tail_bytes, 0));
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        std::ranges::replace(line, '\t', ' ');
        lines.push_back(printable(line));
    }
    if (lines.size() > most)
        lines.erase(lines.begin(), lines.end() - static_cast<std::ptrdiff_t>(most));
    return lines;
}

} // namespace sv
