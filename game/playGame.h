/// The whole game, from the engine's start to its end: what the program is, for those that play it
/// in another way than by hand.
#pragma once

/// The program's exit status: 0, or 1 if the engine did not start. Once a process: the level is not
/// set back.
int playGame();
