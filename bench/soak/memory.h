/// How much memory this process has.
#pragma once

namespace soak {

/// Bytes on the heap that are in use, whoever took them.
long heapBytes();

/// Bytes of the process that are in main memory, or -1.
long residentBytes();

} // namespace soak
