#include "world/Object.h"

namespace sv {

int Object::eventHandler(const Event * /*p_event*/) {
    return 0;
}

int Object::setActive(bool new_is_active) {
    is_active = new_is_active;
    return 0;
}

} // namespace sv
