#include "game/inputReading.h"

#include "selvane/core/EventKeyboard.h"
#include "selvane/core/EventMouse.h"

std::optional<sv::Keyboard::Key> keyOf(const sv::Event *p_event) {
    if (p_event->getType() != sv::KEYBOARD_EVENT)
        return std::nullopt;
    const auto *p_keyboard_event = dynamic_cast<const sv::EventKeyboard *>(p_event);
    if (!p_keyboard_event)
        return std::nullopt;
    return p_keyboard_event->getKey();
}

const sv::EventMouse *asLeftClick(const sv::Event *p_event) {
    if (p_event->getType() != sv::MOUSE_EVENT)
        return nullptr;
    const auto *mouse_event = dynamic_cast<const sv::EventMouse *>(p_event);
    if (!mouse_event || mouse_event->getMouseAction() != sv::CLICKED ||
        mouse_event->getMouseButton() != sv::LEFT)
        return nullptr;
    return mouse_event;
}
