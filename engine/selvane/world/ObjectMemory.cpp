// Which objects were made by `new` and may be deleted. An object cannot know whether it is a
// variable, a member of another object or in a block of its own, so the blocks that Object's
// operator new has allocated are noted until they are freed. An object made by `new` begins where
// its block does.

#include "selvane/world/Object.h"

#include <unordered_set>

namespace sv {

namespace {

/// Never destroyed: objects may be made before main() and after it.
std::unordered_set<const void *> &blocks() {
    static auto &instance = *new std::unordered_set<const void *>;
    return instance;
}

/// Frees the block if there is no memory for the note.
template<typename Free>
void *noted(void *block, Free free_block) {
    try {
        blocks().insert(block);
    } catch (...) {
        free_block(block);
        throw;
    }
    return block;
}

} // namespace

void *Object::operator new(std::size_t size) {
    return noted(::operator new(size), [](void *block) { ::operator delete(block); });
}

void *Object::operator new(std::size_t size, const std::nothrow_t &) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

void *Object::operator new(std::size_t size, std::align_val_t alignment) {
    return noted(::operator new(size, alignment),
                 [=](void *block) { ::operator delete(block, alignment); });
}

void *Object::operator new(std::size_t size, std::align_val_t alignment,
                           const std::nothrow_t &) noexcept {
    try {
        return operator new(size, alignment);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

void Object::operator delete(void *block) noexcept {
    blocks().erase(block);
    ::operator delete(block);
}

void Object::operator delete(void *block, const std::nothrow_t &) noexcept {
    operator delete(block);
}

void Object::operator delete(void *block, std::align_val_t alignment) noexcept {
    blocks().erase(block);
    ::operator delete(block, alignment);
}

void Object::operator delete(void *block, std::align_val_t alignment,
                             const std::nothrow_t &) noexcept {
    operator delete(block, alignment);
}

bool Object::isMadeByNew() const {
    return blocks().contains(dynamic_cast<const void *>(this));
}

} // namespace sv
