/// How much memory this process uses.
#pragma once

namespace soak {

/// Bytes in use on the heap. The C library counts freed blocks that it caches as in use, unless
/// GLIBC_TUNABLES says glibc.malloc.tcache_count=0.
long heapBytes();

/// The process's bytes in main memory, or -1 if they cannot be read.
long residentBytes();

} // namespace soak
