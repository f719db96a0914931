/// An ordered, growable list of objects, used for every set of objects in the engine. It borrows
/// the objects: code that deletes an object removes it first.
///
/// A list may change while an ObjectListIterator walks it, which may then skip an object or visit
/// it twice. A range-for allows no change: walk a copy.
#pragma once

#include <vector>

namespace sv {

class Object;

class ObjectList {
  public:
    using Iterator = std::vector<Object *>::const_iterator;

    ObjectList() = default;
    /// Without memory the copy is empty.
    ObjectList(const ObjectList &other);
    ObjectList &operator=(const ObjectList &other);
    ObjectList(ObjectList &&) noexcept = default;
    ObjectList &operator=(ObjectList &&) noexcept = default;
    ~ObjectList() = default;

    /// Appends, also an object that is there already. 0, or -1 for null or without memory.
    int insert(Object *p_o);

    /// Removes the first entry of that object. 0, or -1 if there is none.
    int remove(const Object *p_o);

    void clear() { objects.clear(); }
    bool isEmpty() const { return objects.empty(); }
    int getCount() const { return static_cast<int>(objects.size()); }
    bool contains(const Object *p_o) const;

    /// The object at that place, or null outside 0 to getCount() - 1.
    Object *at(int index) const;

    Iterator begin() const { return objects.begin(); }
    Iterator end() const { return objects.end(); }

  private:
    friend class ObjectWatch;

    std::vector<Object *> objects;
};

/// The objects of the left list followed by those of the right.
ObjectList operator+(const ObjectList &left, const ObjectList &right);

/// Walks a list by index. REQUIRES: the list outlives its iterator.
class ObjectListIterator {
  public:
    explicit ObjectListIterator(const ObjectList *new_list) : list(new_list) {}

    void first() { index = 0; }
    bool isDone() const { return index >= list->getCount(); }
    void next();

    /// Null when done.
    Object *currentObject() const { return list->at(index); }

  private:
    const ObjectList *list;
    int index = 0;
};

} // namespace sv
