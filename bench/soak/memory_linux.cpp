#include "memory.h"

#include <fstream>
#include <malloc.h>
#include <unistd.h>

namespace soak {

long heapBytes() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<long>(info.uordblks + info.hblkhd);
}

long residentBytes() {
    long all = 0;
    long resident = 0;
    std::ifstream file("/proc/self/statm");
    return file >> all >> resident ? resident * sysconf(_SC_PAGESIZE) : -1;
}

} // namespace soak
