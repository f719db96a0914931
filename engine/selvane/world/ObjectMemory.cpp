// Which objects were made by `new`, and may be deleted. An object cannot tell by itself whether it
// is a variable, a member of another object or in a block of its own: the blocks that Object's
// operator new has taken are noted until they are given back, and an object that was made so begins
// where its block does.

#include "selvane/world/Object.h"

#include <unordered_set>

namespace sv {

namespace {

/// Never destroyed: objects may be made before main() and after it.
std::unordered_set<const void *> &blocks() {
    static auto &instance = *new std::unordered_set<const void *>;
    return instance;
}

/// Without memory for the note the block is given back.
template<typename GiveBack>
void *noted(void *p_block, GiveBack give_back) {
    try {
        blocks().insert(p_block);
    } catch (...) {
        give_back(p_block);
        throw;
    }
    return p_block;
}

} // namespace

void *Object::operator new(std::size_t size) {
    return noted(::operator new(size), [](void *p_block) { ::operator delete(p_block); });
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
                 [=](void *p_block) { ::operator delete(p_block, alignment); });
}

void *Object::operator new(std::size_t size, std::align_val_t alignment,
                           const std::nothrow_t &) noexcept {
    try {
        return operator new(size, alignment);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

void Object::operator delete(void *p_block) noexcept {
    blocks().erase(p_block);
    ::operator delete(p_block);
}

void Object::operator delete(void *p_block, const std::nothrow_t &) noexcept {
    operator delete(p_block);
}

void Object::operator delete(void *p_block, std::align_val_t alignment) noexcept {
    blocks().erase(p_block);
    ::operator delete(p_block, alignment);
}

void Object::operator delete(void *p_block, std::align_val_t alignment,
                             const std::nothrow_t &) noexcept {
    operator delete(p_block, alignment);
}

bool Object::isMadeByNew() const {
    return blocks().contains(dynamic_cast<const void *>(this));
}

} // namespace sv
