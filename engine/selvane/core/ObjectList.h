/// An ordered, growable list of objects, used for every set of objects in the engine. It borrows
/// the objects: it never deletes one, and whoever deletes an object takes it out first.
///
/// Changing a list while an ObjectListIterator walks it is allowed and never reads past its end,
/// but may pass over an object or visit it twice. A range-for allows no change: walk a copy.
#pragma once

#include <vector>

namespace sv {

class Object;

class ObjectList {
  public:
    ObjectList() = default;
    /// A copy that finds no memory is an empty list.
    ObjectList(const ObjectList &other);
    ObjectList &operator=(const ObjectList &other);
    ObjectList(ObjectList &&) noexcept = default;
    ObjectList &operator=(ObjectList &&) noexcept = default;
    ~ObjectList() = default;

    /// Appends, without looking whether the object is there already. 0, or -1 for null or without
    /// memory.
    int insert(Object *p_o);

    /// Removes the first entry of that object and keeps the order of the others. 0, or -1 if it is
    /// not in the list.
    int remove(const Object *p_o);

    void clear() { objects.clear(); }
    bool isEmpty() const { return objects.empty(); }
    int getCount() const { return static_cast<int>(objects.size()); }
    bool contains(const Object *p_o) const;

    /// The object at that place, or null outside 0 to getCount() - 1.
    Object *at(int index) const;

    auto begin() const { return objects.begin(); }
    auto end() const { return objects.end(); }

  private:
    friend class ObjectWatch;

    std::vector<Object *> objects;
};

/// The objects of the left list followed by those of the right.
ObjectList operator+(const ObjectList &left, const ObjectList &right);

/// Walks a list by index. REQUIRES: the list outlives its iterator.
class ObjectListIterator {
  public:
    explicit ObjectListIterator(const ObjectList *list) : p_list(list) {}

    void first() { index = 0; }
    bool isDone() const { return index >= p_list->getCount(); }
    void next();

    /// Null when done.
    Object *currentObject() const { return p_list->at(index); }

  private:
    const ObjectList *p_list;
    int index = 0;
};

} // namespace sv
