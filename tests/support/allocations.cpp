#include "support/allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace test {

namespace {

// Drivers allocate on threads of their own.
std::atomic<long> count = 0;
std::atomic<long> bytes = 0;
std::atomic<int> left = -1;
std::atomic<int> nothrow_left = -1;

/// False if there is none left; otherwise takes one.
bool take(std::atomic<int> &calls) {
    if (calls > 0)
        --calls;
    else if (calls == 0)
        return false;
    return true;
}

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

void failAfter(int calls) {
    left = calls;
}

void failNothrowAfter(int calls) {
    nothrow_left = calls;
}

} // namespace test

void *operator new(std::size_t size) {
    if (!test::take(test::left))
        throw std::bad_alloc();
    void *memory = test::allocate(size);
    if (memory == nullptr)
        std::abort();
    return memory;
}

void *operator new(std::size_t size, const std::nothrow_t & /*tag*/) noexcept {
    return test::take(test::nothrow_left) ? test::allocate(size) : nullptr;
}

void operator delete(void *memory) noexcept {
    std::free(memory);
}

void operator delete(void *memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
