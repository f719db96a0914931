#include "support/allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace test {

namespace {

// Drivers allocate on threads of their own.
std::atomic<long> count = 0;
std::atomic<long> bytes = 0;
std::atomic<int> nothrow_left = -1;

void *allocate(std::size_t size) {
    ++count;
    bytes += static_cast<long>(size);
    return std::malloc(size != 0 ? size : 1);
}

} // namespace

long allocations() {
    return count;
}

long allocatedBytes() {
    return bytes;
}

void failNothrowAfter(int calls) {
    nothrow_left = calls;
}

} // namespace test

void *operator new(std::size_t size) {
    void *memory = test::allocate(size);
    if (memory == nullptr)
        std::abort();
    return memory;
}

void *operator new(std::size_t size, const std::nothrow_t & /*tag*/) noexcept {
    if (test::nothrow_left == 0)
        return nullptr;
    if (test::nothrow_left > 0)
        --test::nothrow_left;
    return test::allocate(size);
}

void operator delete(void *memory) noexcept {
    std::free(memory);
}

void operator delete(void *memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
