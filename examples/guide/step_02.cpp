#include "game.h"

#include "selvane/selvane.h"

class Gardener : public sv::Object {
  public:
    Gardener() {
        setType("gardener");
        setSprite("gardener");
        setPosition({6, 10}); // Cells, from the window's upper left corner.
    }
};

/// 0, or -1 with the reason in the log.
int loadFiles() {
    auto &resources = sv::ResourceManager::getInstance();
    return resources.loadSprite("sprites/gardener.txt", "gardener");
}

int playGame() {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_ready = game.startUp() == 0 && loadFiles() == 0;
    if (is_ready) {
        sv::spawn<Gardener>();
        game.run();
    }
    game.shutDown();
    return is_ready ? 0 : 1;
}
