/// The log's file, which several programs may write at the same time.
///
/// Opening it empties it, unless another program has it open: then both append to it, and what each
/// writes in one call stays in one piece. Game-loop thread only.
#pragma once

#include <cstdio>
#include <string>

namespace sv::platform {

struct LogFile {
    std::FILE *p_file = nullptr; ///< The caller closes it. Null if it can't be opened; see errno.
    bool is_shared = false;      ///< Whether another running program has it open too.
};

/// Opens a log for writing. A file that is also standard error is not emptied. Anything but a
/// regular file, such as a terminal or a pipe, is never shared. On a file system without locks no
/// file counts as shared.
LogFile openLog(const std::string &name);

/// Creates and opens a log; null if the name exists already.
std::FILE *openNewLog(const std::string &name);

} // namespace sv::platform
