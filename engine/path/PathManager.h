/// Gives the searches for paths their share of every step. There are none yet.
///
/// Game-loop thread only.
#pragma once

#include "core/Manager.h"

namespace sv {

class PathManager : public Manager {
  public:
    static PathManager &getInstance();

    int startUp() override;
    void shutDown() override;

    /// Works on the pending searches for about that many milliseconds; 0 or less is allowed.
    void cycle(int /*milliseconds_left*/) {}

  private:
    PathManager();
};

} // namespace sv
