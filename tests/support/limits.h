/// The system's limits for the test's own process.
#pragma once

namespace test {

/// Lets the process open no further files and sockets; false where the system can't do that.
bool allowNoMoreFiles();

/// Lets it open files and sockets again.
void allowMoreFiles();

} // namespace test
