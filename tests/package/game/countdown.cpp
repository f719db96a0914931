#include "selvane/selvane.h"

class Countdown : public sv::Object {
  public:
    Countdown() { registerInterest(sv::STEP_EVENT); }

    int eventHandler(const sv::Event *p_event) override {
        if (--steps_left == 0)
            sv::GameManager::getInstance().setGameOver();
        return sv::Object::eventHandler(p_event);
    }

  private:
    int steps_left = 3;
};

int main() {
    sv::GameManager &game = sv::GameManager::getInstance();
    if (game.startUp() != 0)
        return 1;
    new Countdown;
    game.run();
    game.shutDown();
}
