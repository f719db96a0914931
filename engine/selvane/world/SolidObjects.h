/// The solid objects in the order in which they became solid, with their boxes, and which of them a
/// box touches. It looks through all boxes, or, if it is divided, through those that a grid finds
/// near it; the answers are the same.
///
/// Borrows the objects; the scene graph owns the one list. Game-loop thread only.
#pragma once

#include "selvane/core/Box.h"
#include "selvane/core/ObjectList.h"
#include "selvane/world/SolidGrid.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace sv {

class Object;

class SolidObjects {
  public:
    /// How many columns and rows of cells the world has, and whether collisions are looked for in
    /// them. Searches for paths always do.
    void divide(int new_columns, int new_rows, bool new_is_divided);

    /// What is divided.
    void setWorld(const Box &new_world);

    /// Appends an object, also one that is there already. 0, or -1 without memory.
    int insert(Object *p_o);

    /// Removes the first entry of that object. 0, or -1 if there is none.
    int remove(const Object *p_o);

    /// Removes every entry of an object that may be dead.
    void purge(const Object *p_o);

    /// Called before the object gets that position, and after it got another box.
    void updatePosition(const Object *p_o, Vector new_position);

    /// Appends the others that the object's box would touch at `where`, in order.
    void findTouched(const Object *p_o, Vector where, ObjectList &touched) const;

    /// Whether one of those is hard and does not cover the position `goal`.
    bool isBlocked(const Object *p_o, Vector where, Vector goal) const;

  private:
    struct Entry {
        Corners box; // Touches nothing once the object is removed.
        Object *object = nullptr;
    };

    bool isAt(std::size_t place, const Object *p_o) const;
    bool isFiledOnce(const Object *p_o) const;
    bool isAlone(const Object *p_o, const Corners &box) const;
    void search(const Object *p_o, Vector where, ObjectList &touched) const;
    std::size_t placeOf(const Object *p_o) const;
    void clear(std::size_t place);
    void move(std::size_t place, const Corners &to);
    void closeGaps();
    template<typename Change>
    void changeGrid(Change change);
    bool isGridReady() const { return is_current || fillGrid(); }
    bool fillGrid() const;
    bool findNear(const Object *p_o, const Corners &box) const;

    std::vector<Entry> entries; // With gaps, so that places stay.
    std::size_t gaps = 0;

    Box world;
    int columns = 1;
    int rows = 1;
    bool is_divided = false;
    // Of the places. Filled when it is needed; from then on kept current if the world is divided.
    mutable SolidGrid grid;
    mutable bool is_current = false;
    mutable std::vector<std::uint32_t> near; // What findNear() has found.
};

} // namespace sv
