/// How the targets and the button read an event.
#pragma once

#include "selvane/core/EventMouse.h"

/// The event if it is a click of the left mouse button, or null.
inline const sv::EventMouse *asLeftClick(const sv::Event *p_event) {
    const auto *mouse_event = sv::eventCast<sv::EventMouse>(p_event);
    if (!mouse_event || mouse_event->getMouseAction() != sv::CLICKED ||
        mouse_event->getMouseButton() != sv::LEFT)
        return nullptr;
    return mouse_event;
}
