/// While an object of this class lives, the game's time stands still.
#pragma once

#include "selvane/outside/Outside.h"
#include "selvane/platform/system.h"

#include <cstdint>

namespace sv {

class HeldTime {
  public:
    HeldTime() = default;
    ~HeldTime() { Outside::getInstance().holdBack((now() - begin) / 1000); }
    HeldTime(const HeldTime &) = delete;
    HeldTime &operator=(const HeldTime &) = delete;

  private:
    static std::int64_t now() { return platform::timeSource().steadyTime(); }

    std::int64_t begin = now(); // Microseconds.
};

} // namespace sv
