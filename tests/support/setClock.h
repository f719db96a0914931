/// A wall clock that a test sets, in a program that support/setClock_posix.cpp is part of.
#pragma once

namespace test {

/// Seconds that it shows more than the real one.
extern long wall_clock_ahead_s;

} // namespace test
