#include "selvane/world/LivingObjects.h"

#include <new>

namespace sv {

void LivingObjects::add(const Object *p_o, bool is_made_by_new) {
    try {
        lives[p_o] = {next_number++, is_made_by_new, false};
    } catch (const std::bad_alloc &) {
        return;
    }
}

bool LivingObjects::isMadeByNew(const Object *p_o) const {
    const Life *life = find(p_o);
    return life && life->is_made_by_new;
}

void LivingObjects::setTakenOut(const Object *p_o) {
    if (const auto found = lives.find(p_o); found != lives.end())
        found->second.is_taken_out = true;
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
