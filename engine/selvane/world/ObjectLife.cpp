// How long an object lives, and what it is sent when its animation ends.

#include "selvane/core/EventAnimationEnd.h"
#include "selvane/core/LogManager.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"

#include <algorithm>

namespace sv {

int Object::setLifeSpan(int new_life_span) {
    if (new_life_span < UNTIL_ANIMATION_ENDS)
        return logFailure("Object::setLifeSpan(): Warning! Life span %d is below 0. Ignored.",
                          new_life_span);
    life_span = new_life_span;
    return 0;
}

void Object::spendLife() {
    const bool has_animation_ended = animation.takeEnd();
    const bool is_over = life_span == UNTIL_ANIMATION_ENDS
                             ? has_animation_ended || !animation.getSprite()
                             : life_span > 0 && --life_span == 0;
    if (is_over)
        WorldManager::getInstance().markForDelete(this);
    if (has_animation_ended &&
        std::find(event_name.begin(), event_name.end(), ANIMATION_END_EVENT) != event_name.end()) {
        const EventAnimationEnd end;
        eventHandler(&end);
    }
}

} // namespace sv
