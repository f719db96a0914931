/// Owns the sprites, sounds and music of a game, each found by a label. Nothing can be loaded yet.
///
/// Game-loop thread only.
#pragma once

#include "core/Manager.h"

namespace sv {

class ResourceManager : public Manager {
  public:
    static ResourceManager &getInstance();

    int startUp() override;
    void shutDown() override;

  private:
    ResourceManager();
};

} // namespace sv
