/// Names under which sprites, sounds and music are found.
#pragma once

namespace sv {

/// What each of them is called until it is given a label.
inline constexpr char UNDEFINED_LABEL[] = "[Undefined]";

} // namespace sv
