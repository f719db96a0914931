// Which objects were made by `new`, and may be deleted. An object cannot tell by itself whether it
// is a variable, a member of another object or in a block of its own.
//
// Each block that `new` takes for an object is noted, and the first object that is constructed in
// it claims it: that is the one that was asked for, since an object is constructed before its
// members. Several blocks may wait: `new Ship(new Turret)` takes both before either is constructed.

#include "selvane/world/Object.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace sv {

namespace {

struct Block {
    const std::byte *begin;
    std::size_t size;
};

/// Those that nobody has claimed. Never destroyed: objects may be made before main() and after it.
std::vector<Block> &blocks() {
    static auto &instance = *new std::vector<Block>;
    return instance;
}

/// Pointers into different blocks have an order only for std::less and its like.
bool isIn(const Block &block, const std::byte *place) {
    return std::less_equal<>()(block.begin, place) &&
           std::less<>()(place, block.begin + block.size);
}

/// Without memory for the note the block is given back.
template<typename GiveBack>
void *noted(void *p_block, std::size_t size, GiveBack give_back) {
    try {
        blocks().push_back({static_cast<const std::byte *>(p_block), size});
    } catch (...) {
        give_back(p_block);
        throw;
    }
    return p_block;
}

/// One that is still there when its block is given back: a constructor's argument threw.
void forgetBlock(const void *p_block) {
    std::erase_if(blocks(), [=](const Block &block) { return block.begin == p_block; });
}

} // namespace

void *Object::operator new(std::size_t size) {
    return noted(::operator new(size), size, [](void *p_block) { ::operator delete(p_block); });
}

void *Object::operator new(std::size_t size, const std::nothrow_t &) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

void *Object::operator new(std::size_t size, std::align_val_t alignment) {
    return noted(::operator new(size, alignment), size,
                 [=](void *p_block) { ::operator delete(p_block, alignment); });
}

void Object::operator delete(void *p_block) noexcept {
    forgetBlock(p_block);
    ::operator delete(p_block);
}

void Object::operator delete(void *p_block, const std::nothrow_t &) noexcept {
    operator delete(p_block);
}

void Object::operator delete(void *p_block, std::align_val_t alignment) noexcept {
    forgetBlock(p_block);
    ::operator delete(p_block, alignment);
}

bool Object::claimNewBlock() const {
    const auto *place = reinterpret_cast<const std::byte *>(this);
    const auto found =
        std::ranges::find_if(blocks(), [=](const Block &block) { return isIn(block, place); });
    if (found == blocks().end())
        return false;
    blocks().erase(found);
    return true;
}

} // namespace sv
