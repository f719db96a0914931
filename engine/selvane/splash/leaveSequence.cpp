#include "selvane/splash/leaveSequence.h"

#include "selvane/core/Event.h"
#include "selvane/loop/GameManager.h"
#include "selvane/world/WorldManager.h"

namespace sv {

std::optional<int> leaveSequence(Object *p_o, const Event *p_event) {
    GameManager &game = GameManager::getInstance();
    const bool was_over = game.getGameOver();
    if (!was_over && p_event->getType() != KEYBOARD_EVENT)
        return std::nullopt;
    game.setGameOver();
    WorldManager::getInstance().markForDelete(p_o);
    return was_over ? 0 : 1;
}

} // namespace sv
