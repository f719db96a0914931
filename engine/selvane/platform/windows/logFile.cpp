#include "selvane/platform/logFile.h"

#include <share.h>

namespace sv::platform {

// A file that somebody writes cannot be opened by one who would keep others from writing it.
LogFile openLog(const std::string &name) {
    std::FILE *p_alone = _fsopen(name.c_str(), "w", _SH_DENYWR);
    if (p_alone != nullptr)
        std::fclose(p_alone);
    return {_fsopen(name.c_str(), "a", _SH_DENYNO), p_alone == nullptr};
}

std::FILE *openNewLog(const std::string &name) {
    return _fsopen(name.c_str(), "wx", _SH_DENYNO);
}

} // namespace sv::platform
