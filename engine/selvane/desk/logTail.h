/// The last lines of the log, as they stand in its file.
#pragma once

#include <string>
#include <vector>

namespace sv {

/// At most that many; none if the log is no file.
std::vector<std::string> lastLogLines(std::size_t most);

} // namespace sv
