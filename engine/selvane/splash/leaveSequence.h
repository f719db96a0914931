/// How an object of the title sequence leaves it.
#pragma once

#include <optional>

namespace sv {

class Event;
class Object;

/// To be asked first with every event: a key ends the game loop, and once the game is over, by
/// whatever, the object marks itself for deletion. The handler's answer then, or nothing if the
/// sequence goes on.
std::optional<int> leaveSequence(Object *p_o, const Event *p_event);

} // namespace sv
