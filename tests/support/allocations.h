/// The program's `new`, made to fail. A test program that includes this has all of its memory from
/// here.
#pragma once

namespace test {

/// Makes the ordinary `new` calls to come throw after that many; below 0, never.
void failAfter(int calls);

/// How many of them are left.
int callsLeft();

/// Makes the `new (std::nothrow)` calls to come fail after that many; below 0, never.
void failNothrowAfter(int calls);

} // namespace test
