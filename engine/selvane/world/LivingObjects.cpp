#include "selvane/world/LivingObjects.h"

#include <new>

namespace sv {

void LivingObjects::add(const Object *p_o) {
    try {
        lives[p_o] = {next_number++, false};
    } catch (const std::bad_alloc &) {
        return;
    }
}

void LivingObjects::setDetached(const Object *p_o, bool is_detached) {
    if (const auto found = lives.find(p_o); found != lives.end())
        found->second.is_detached = is_detached;
}

bool LivingObjects::isDetached(const Object *p_o) const {
    const Life *life = find(p_o);
    return life && life->is_detached;
}

bool LivingObjects::isMadeSince(const Object *p_o, std::uint64_t number) const {
    const Life *life = find(p_o);
    return life && life->number >= number;
}

const LivingObjects::Life *LivingObjects::find(const Object *p_o) const {
    const auto found = lives.find(p_o);
    return found == lives.end() ? nullptr : &found->second;
}

} // namespace sv
