/// What befalls a program and its connections from outside.
#pragma once

#include "selvane/platform/sockets.h"

namespace test {

/// Makes a connected socket hear nothing any more, and so answer nothing: at the other end it looks
/// as if its machine had vanished. False where the system has no way to do that.
bool fallSilent(sv::platform::Socket socket);

/// Ends the sending side of a connected socket, which goes on receiving.
void stopSending(sv::platform::Socket socket);

/// Has the system take little of what is sent and not yet received.
void shrinkSendBuffer(sv::platform::Socket socket);

/// As long as it lives, signals interrupt what waits in this process, where a system has signals.
class Interruptions {
  public:
    Interruptions();
    ~Interruptions();
    Interruptions(const Interruptions &) = delete;
    Interruptions &operator=(const Interruptions &) = delete;
};

} // namespace test
