/// How much memory this process has.
#pragma once

namespace soak {

/// Bytes on the heap that are in use, whoever took them. The C library counts what it keeps back
/// for the next call as in use, unless GLIBC_TUNABLES says glibc.malloc.tcache_count=0.
long heapBytes();

/// Bytes of the process that are in main memory, or -1.
long residentBytes();

} // namespace soak
