/// The whole program as a function, from the engine's start to its end, so that the tests and the
/// demo can run it too.
#pragma once

/// Returns the program's exit status: 1 if the engine did not start, else 0 or what has ended it.
/// REQUIRES: it is called once in a process, or in a sv::Session, which puts the level back.
int playGame();
