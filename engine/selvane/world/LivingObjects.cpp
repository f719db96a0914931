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

void LivingObjects::setTakenOut(const Object *p_o, bool is_taken_out) {
    if (const auto found = lives.find(p_o); found != lives.end())
        found->second.is_taken_out = is_taken_out;
}

bool LivingObjects::isTakenOut(const Object *p_o) const {
    const Life *life = find(p_o);
    return life && life->is_taken_out;
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
