// Afterimage, a memory shooter: keep in mind what the screens tell you, shoot just that, and submit
// before the time is up.

#include "game/playGame.h"

int main() {
    return playGame();
}
