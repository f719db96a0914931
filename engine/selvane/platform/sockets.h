/// Non-blocking TCP sockets, the same on every operating system: no lists, no events, no log.
///
/// A call that fails returns -1 (no_socket where it returns a socket) and lastSocketError() says
/// why. The caller owns every socket it is given and closes it. Game-loop thread only.
#pragma once

#include <cstdint>
#include <string>

namespace sv::platform {

/// A socket handle, wide enough for every system's.
using Socket = std::intptr_t;
inline constexpr Socket no_socket = -1;

/// Bytes that a connection holds until the program reads them. Small enough for the default limits
/// of every system.
inline constexpr int receive_buffer_bytes = 128 * 1024;

/// Milliseconds that connecting may take, for each address that is tried.
inline constexpr int connect_timeout_ms = 3000;

/// Milliseconds after which a peer counts as gone: one that owes an answer and sends nothing, or
/// one that has ended its sending side and takes nothing of what is still sent to it.
inline constexpr int peer_patience_ms = 30000;

/// To be called before any other function here; may be called again. 0, or -1.
int startSockets();

/// The system's code for the last call here that failed. A call that succeeds does not change it.
int lastSocketError();

/// Whether a code means that the call would have had to wait.
bool isWouldBlock(int code);

/// The system's message for a code: one line of UTF-8 in the system's language, without a line
/// end. For a code that the system does not know, it says that the error is unknown.
std::string socketErrorText(int code);

/// Listens on an IPv4 or IPv6 address or on that of a host name. Port 0 takes any free port, and
/// "::" listens on all addresses of both kinds. Fails if another socket listens on the port; a port
/// whose listener has just closed is free.
Socket listenOn(const std::string &address, int port, int backlog);

/// The port that a socket is bound to, 1 to 65535, or -1.
int localPort(Socket socket);

/// Takes one waiting connection. If none waits, no_socket with a code for which isWouldBlock() is
/// true.
Socket acceptFrom(Socket listener);

/// Connects to a numeric address or a host name, trying each address of the name in turn. Blocks
/// until connected, refused or timed out, and while the system looks up the name.
Socket connectTo(const std::string &host, int port, int timeout_ms = connect_timeout_ms);

/// Bytes that wait to be received, or -1.
int waitingBytes(Socket socket);

/// Whether nothing more will arrive than what waits already: the peer has closed or died, or the
/// connection has failed. A machine that vanishes without closing is noticed after about half a
/// minute, or after some minutes if it had long stopped reading. A peer whose system answers is not
/// gone, even if it never reads. Windows ignores `patience_ms`: with data on its way, it gives up
/// after five attempts.
bool isPeerGone(Socket socket, int patience_ms = peer_patience_ms);

/// Whether the peer has ended its sending side and may still read: a peer that has closed looks the
/// same until something is sent to it.
bool isPeerDone(Socket socket);

/// Copies up to `size` waiting bytes and leaves them in the socket. The number copied, 0 at the end
/// of the connection, or -1. REQUIRES: size > 0, here and in receive() and send().
int peek(Socket socket, void *buffer, int size);

/// Takes up to `size` waiting bytes. The number taken, 0 at the end of the connection, or -1.
int receive(Socket socket, void *buffer, int size);

/// Hands up to `size` bytes to the system. The number that it took, or -1. A peer that has closed
/// is an error, never a signal.
int send(Socket socket, const void *buffer, int size);

/// 0, or -1.
int closeSocket(Socket socket);

} // namespace sv::platform
