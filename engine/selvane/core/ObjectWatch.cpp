#include "selvane/core/ObjectWatch.h"

#include "selvane/core/ObjectList.h"

#include <algorithm>

namespace sv {

ObjectWatch *ObjectWatch::innermost = nullptr;

ObjectWatch::ObjectWatch(ObjectList &list)
    : ObjectWatch(list.objects.data(), list.objects.size()) {}

void ObjectWatch::forget(const Object *p_o) {
    for (ObjectWatch *watch = innermost; watch; watch = watch->outer)
        std::replace(watch->first, watch->first + watch->count, const_cast<Object *>(p_o),
                     static_cast<Object *>(nullptr));
}

} // namespace sv
