/// What the game's objects want to know of an input event.
#pragma once

#include "selvane/core/Keyboard.h"

#include <optional>

namespace sv {
class Event;
class EventMouse;
} // namespace sv

/// The key of a keyboard event: pressed, held or released, all the same to this game. Nothing for
/// any other event.
std::optional<sv::Keyboard::Key> keyOf(const sv::Event *p_event);

/// The event if it is a click of the left mouse button, or null.
const sv::EventMouse *asLeftClick(const sv::Event *p_event);
