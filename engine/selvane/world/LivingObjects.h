/// Which objects live, known by their addresses alone: a pointer that may be dead is compared,
/// never followed. Filled by the objects' constructors and emptied by their destructors.
///
/// Borrows the objects; the world manager owns the one set. Game-loop thread only.
#pragma once

#include <cstdint>
#include <unordered_map>

namespace sv {

class Object;

class LivingObjects {
  public:
    /// Without memory the object stays unknown, and the world refuses it like a dead one.
    void add(const Object *p_o);
    void remove(const Object *p_o) { lives.erase(p_o); }

    /// An object that was made since at the same address answers for a dead one.
    bool contains(const Object *p_o) const { return lives.contains(p_o); }

    /// Whether the world has taken out an object which it may not delete.
    void setTakenOut(const Object *p_o, bool is_taken_out);
    bool isTakenOut(const Object *p_o) const;

    /// Objects have numbers in the order of their making; this is the next one's.
    std::uint64_t getNextNumber() const { return next_number; }
    bool isMadeSince(const Object *p_o, std::uint64_t number) const;

  private:
    struct Life {
        std::uint64_t number;
        bool is_taken_out;
    };

    const Life *find(const Object *p_o) const;

    std::unordered_map<const Object *, Life> lives;
    std::uint64_t next_number = 0;
};

} // namespace sv
