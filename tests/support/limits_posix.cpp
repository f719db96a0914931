#include "support/limits.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace test {

namespace {

bool setSoftLimit(rlim_t files) {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return false;
    limit.rlim_cur = files < limit.rlim_max ? files : limit.rlim_max;
    return setrlimit(RLIMIT_NOFILE, &limit) == 0;
}

} // namespace

bool allowNoMoreFiles() {
    // The limit is on a descriptor's number, and the next one is the lowest free number.
    const int next = open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (next < 0)
        return false;
    close(next);
    return setSoftLimit(static_cast<rlim_t>(next));
}

void allowMoreFiles() {
    setSoftLimit(1024);
}

} // namespace test
