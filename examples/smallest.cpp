// The smallest program that shows something: a saucer that crosses the window.

#include "selvane/selvane.h"

class Saucer : public sv::Object {
  public:
    Saucer() {
        setPosition({0, 12});    // Cells: the window has 80 columns and 24 rows.
        setVelocity({0.25F, 0}); // A quarter of a cell a step, thirty steps a second.
    }

    int draw() override {
        return sv::DisplayManager::getInstance().drawString(getPosition(), "<o-o>");
    }
};

int main() {
    sv::GameManager &game = sv::GameManager::getInstance();
    if (game.startUp() != 0)
        return 1; // It has said why.
    sv::spawn<Saucer>();
    game.run(); // Until the window is closed.
    game.shutDown();
    return 0;
}
