/// Makes an object that the world owns: it moves, draws and deletes it, when it is marked for that
/// or the engine stops.
#pragma once

#include "selvane/world/Object.h"

#include <type_traits>
#include <utility>

namespace sv {

/// Makes an object, as in `spawn<Saucer>(colour)`. The pointer is good until the world deletes it.
template<typename SomeObject, typename... Arguments>
SomeObject *spawn(Arguments &&...arguments) {
    static_assert(std::is_base_of_v<Object, SomeObject>, "the world owns objects alone");
    return new SomeObject(std::forward<Arguments>(arguments)...);
}

} // namespace sv
