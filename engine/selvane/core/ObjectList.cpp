#include "selvane/core/ObjectList.h"

#include <algorithm>
#include <new>

namespace sv {

ObjectList::ObjectList(const ObjectList &other) {
    *this = other;
}

ObjectList &ObjectList::operator=(const ObjectList &other) {
    try {
        objects = other.objects;
    } catch (const std::bad_alloc &) {
        objects.clear();
    }
    return *this;
}

int ObjectList::insert(Object *p_o) {
    if (!p_o)
        return -1;
    try {
        objects.push_back(p_o);
    } catch (const std::bad_alloc &) {
        return -1;
    }
    return 0;
}

int ObjectList::remove(const Object *p_o) {
    const auto found = std::find(objects.begin(), objects.end(), p_o);
    if (found == objects.end())
        return -1;
    objects.erase(found);
    return 0;
}

bool ObjectList::contains(const Object *p_o) const {
    return std::find(objects.begin(), objects.end(), p_o) != objects.end();
}

Object *ObjectList::at(int index) const {
    return index >= 0 && index < getCount() ? objects[static_cast<std::size_t>(index)] : nullptr;
}

ObjectList operator+(const ObjectList &left, const ObjectList &right) {
    ObjectList both = left;
    for (Object *p_o : right)
        both.insert(p_o);
    return both;
}

void ObjectListIterator::next() {
    if (!isDone())
        ++index;
}

} // namespace sv
