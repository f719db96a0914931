/// The addresses of all living objects: a pointer that may be dead is compared and never
/// dereferenced. Constructors add their objects, destructors remove them.
///
/// Borrows the objects; the world manager owns the one set. Game-loop thread only.
#pragma once

#include <cstdint>
#include <unordered_map>

namespace sv {

class Object;

class LivingObjects {
  public:
    /// Without memory the object stays unknown, and the world refuses it as a dead one.
    void add(const Object *p_o);
    void remove(const Object *p_o) { lives.erase(p_o); }

    /// True for a dead object, too, if another has its address now.
    bool contains(const Object *p_o) const { return lives.contains(p_o); }

    /// Whether the world has released an object that it may not delete.
    void setDetached(const Object *p_o, bool is_detached);
    bool isDetached(const Object *p_o) const;

    /// The number of the next object. They count in the order of creation.
    std::uint64_t getNextNumber() const { return next_number; }
    bool isMadeSince(const Object *p_o, std::uint64_t number) const;

  private:
    struct Life {
        std::uint64_t number;
        bool is_detached;
    };

    const Life *find(const Object *p_o) const;

    std::unordered_map<const Object *, Life> lives;
    std::uint64_t next_number = 0;
};

} // namespace sv
