#include "support/allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace test {

namespace {

// Drivers allocate on threads of their own.
std::atomic<int> left = -1;
std::atomic<int> nothrow_left = -1;

/// Null if none of the calls is left.
void *allocate(std::size_t size, std::atomic<int> &calls) {
    if (calls == 0)
        return nullptr;
    if (calls > 0)
        --calls;
    return std::malloc(size != 0 ? size : 1);
}

} // namespace

void failAfter(int calls) {
    left = calls;
}

int callsLeft() {
    return left;
}

void failNothrowAfter(int calls) {
    nothrow_left = calls;
}

} // namespace test

void *operator new(std::size_t size) {
    void *memory = test::allocate(size, test::left);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

void *operator new(std::size_t size, const std::nothrow_t & /*tag*/) noexcept {
    return test::allocate(size, test::nothrow_left);
}

void operator delete(void *memory) noexcept {
    std::free(memory);
}

void operator delete(void *memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
