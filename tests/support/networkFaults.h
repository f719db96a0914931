/// Faults of a connection or of the system that a test can cause, and what the system knows of a
/// connection.
#pragma once

#include "selvane/platform/sockets.h"

#include <vector>

namespace test {

/// Drops everything that arrives at a connected socket: to its peer, the machine has vanished.
/// False where the system can't do that.
bool dropIncoming(sv::platform::Socket socket);

/// Ends the sending side of a connected socket, which can still receive.
void stopSending(sv::platform::Socket socket);

/// Size of the receive buffer, whether it sends without delay, and whether it asks a silent peer,
/// as Linux counts them; empty on Windows.
std::vector<int> socketOptions(sv::platform::Socket socket);

/// From here on signals interrupt blocking system calls; without effect on Windows.
void interruptCalls();

/// Lets the process open no further files and sockets; false where the system can't do that.
bool allowNoMoreFiles();

/// Lets it open files and sockets again.
void allowMoreFiles();

} // namespace test
