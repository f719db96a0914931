#include "selvane/platform/logFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sv::platform {

namespace {

/// The descriptor, or -1. A pipe that nobody reads is not waited for.
int openToAppend(const std::string &name, int further_flags = 0) {
    constexpr mode_t everybody = 0666; // Less what the umask takes away.
    constexpr int flags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK;
    const int file = open(name.c_str(), flags | further_flags, everybody);
    if (file >= 0)
        fcntl(file, F_SETFL, O_APPEND); // Writing may wait.
    return file;
}

/// False if another writer's lock is in the way.
bool lock(int file, int kind) {
    return flock(file, kind | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

bool isRegular(int file) {
    struct stat status {};
    return fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

bool isStandardError(int file) {
    struct stat status {};
    struct stat errors {};
    return fstat(file, &status) == 0 && fstat(STDERR_FILENO, &errors) == 0 &&
           status.st_dev == errors.st_dev && status.st_ino == errors.st_ino;
}

/// Takes over the descriptor.
std::FILE *toStream(int file) {
    std::FILE *stream = fdopen(file, "a");
    if (!stream)
        close(file);
    return stream;
}

} // namespace

// Every writer holds a shared lock as long as it runs. So whoever gets an exclusive lock is the
// only writer.
LogFile openLog(const std::string &name) {
    const int file = openToAppend(name);
    if (file < 0)
        return {};
    if (!isRegular(file))
        return {toStream(file), false};
    if (isStandardError(file)) {
        // Two descriptors of one file would overwrite each other's lines.
        close(file);
        return {toStream(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0)), false};
    }
    const bool is_alone = lock(file, LOCK_EX);
    if (is_alone && ftruncate(file, 0) != 0) {
        close(file);
        return {};
    }
    lock(file, LOCK_SH);
    return {toStream(file), !is_alone};
}

std::FILE *openNewLog(const std::string &name) {
    const int file = openToAppend(name, O_EXCL);
    if (file < 0)
        return nullptr;
    lock(file, LOCK_SH);
    return toStream(file);
}

} // namespace sv::platform
