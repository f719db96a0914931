#include "game.h"

int main() {
    return playGame();
}
