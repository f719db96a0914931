/// The calls of platform/sockets.h as a game is to make them: through the door, so that what the
/// network brings is recorded, and comes from the record when that is played. Then no socket is
/// opened. They mean the same as those of the same names.
#pragma once

#include "selvane/platform/sockets.h"

#include <string>

namespace sv::outside {

using platform::Socket;

int startSockets();
int lastSocketError();
bool isWouldBlock(int code);
std::string socketErrorText(int code);
Socket listenOn(const std::string &address, int port, int backlog);
int localPort(Socket socket);
Socket acceptFrom(Socket listener);
Socket connectTo(const std::string &host, int port);
int waitingBytes(Socket socket);
bool isPeerGone(Socket socket);
bool isPeerDone(Socket socket);
int peek(Socket socket, void *buffer, int size);
int receive(Socket socket, void *buffer, int size);
int send(Socket socket, const void *buffer, int size);
int closeSocket(Socket socket);

} // namespace sv::outside
