/// What Windows answers as a test wants it: the linker takes these functions in place of those that
/// the system's libraries offer, and they ask the system itself for all the rest.
#pragma once

#include <string>

namespace test {

/// The text that belongs to every error code from now on; empty if the system has none.
void answerErrorText(const std::wstring &text);

/// Timers of fewer milliseconds are refused from now on.
void refuseTimersBelow(unsigned milliseconds);

} // namespace test
