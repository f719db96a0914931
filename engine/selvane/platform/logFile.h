/// The file of a log, which several programs may write at the same time.
///
/// Whoever opens it alone empties it. While anybody writes it, those who come later add to it: what
/// each writes in one piece stays whole. Game-loop thread only.
#pragma once

#include <cstdio>
#include <string>

namespace sv::platform {

struct LogFile {
    std::FILE *p_file =
        nullptr;            ///< The caller closes it. Null: it cannot be opened; errno has why.
    bool is_shared = false; ///< Whether another running program writes it, too.
};

/// Opens a log to write. One that is also standard error is not emptied. What is no file, as a
/// terminal or a pipe, is nobody's and has nothing to empty; a file system that knows no locks
/// counts as one on which every program is alone.
LogFile openLog(const std::string &name);

/// Opens a log whose name is nobody's yet; null otherwise.
std::FILE *openNewLog(const std::string &name);

} // namespace sv::platform
