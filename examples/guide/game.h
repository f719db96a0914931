#pragma once

/// Plays the game to its end. 0, or 1 if the engine does not start.
int playGame();
