#include "selvane/platform/logFile.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

namespace sv::platform {

// A file that another program writes cannot be opened with other writers denied.
LogFile openLog(const std::string &name) {
    std::FILE *alone = _fsopen(name.c_str(), "w", _SH_DENYWR);
    if (alone)
        std::fclose(alone);
    return {_fsopen(name.c_str(), "a", _SH_DENYNO), !alone};
}

std::FILE *openNewLog(const std::string &name) {
    int file = -1;
    const int flags = _O_WRONLY | _O_CREAT | _O_EXCL | _O_APPEND | _O_TEXT;
    if (_sopen_s(&file, name.c_str(), flags, _SH_DENYNO, _S_IREAD | _S_IWRITE) != 0)
        return nullptr;
    return _fdopen(file, "a");
}

} // namespace sv::platform
