#include "game.h"

#include "selvane/selvane.h"

class Gardener : public sv::Object {
  public:
    Gardener() {
        setType("gardener");
        setPosition({6, 10}); // Cells, from the window's upper left corner.
    }

    int draw() override {
        return sv::DisplayManager::getInstance().drawCh(getPosition(), '@', sv::YELLOW);
    }
};

int playGame() {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_started = game.startUp() == 0;
    if (is_started) {
        sv::spawn<Gardener>();
        game.run();
    }
    game.shutDown();
    return is_started ? 0 : 1;
}
