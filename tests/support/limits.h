/// What the system grants the test's own process.
#pragma once

namespace test {

/// Grants no files and sockets from now on but those that are open; false where a system cannot be
/// told to.
bool allowNoMoreFiles();

/// Grants as many as at first.
void allowMoreFiles();

} // namespace test
