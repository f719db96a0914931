/// TCP sockets, as the operating system has them: no lists, no events, no log.
///
/// A call that fails answers -1 (no_socket where it gives a socket) and lastSocketError() tells
/// why. The caller owns every socket it is given and closes it. Game-loop thread only.
#pragma once

#include <cstdint>
#include <string>

namespace sv::platform {

/// A socket handle, wide enough for every system's.
using Socket = std::intptr_t;
inline constexpr Socket no_socket = -1;

/// Bytes that a connection holds for a program that does not read them yet. Small enough for every
/// system to grant it unasked.
inline constexpr int receive_buffer_bytes = 128 * 1024;

/// Milliseconds that a connection may take to come about, for each address that is tried.
inline constexpr int connect_timeout_ms = 3000;

/// Milliseconds after which a peer counts as gone that owes an answer and says nothing, or that has
/// said its last word and takes nothing of what it is still to get.
inline constexpr int peer_patience_ms = 30000;

/// Makes the sockets of this process usable; to be called before any other function here. May be
/// called again. 0, or -1.
int startSockets();

/// The system's code for the last call here that failed; a call that succeeds leaves it.
int lastSocketError();

/// Whether a code says that the call would have had to wait.
bool isWouldBlock(int code);

/// The system's message for a code, one line of UTF-8 in the system's language, without the line
/// end. Never empty: a code that the system does not know is called an unknown error.
std::string socketErrorText(int code);

/// A non-blocking socket that listens on an IPv4 or IPv6 address or on that of a host name; port 0
/// takes a free one, and "::" listens on all addresses of either kind. A port on which another
/// socket listens is refused; one that was just given up is not.
Socket listenOn(const std::string &address, int port, int backlog);

/// The port that a socket is bound to, 1 to 65535, or -1.
int localPort(Socket socket);

/// Takes one waiting connection, non-blocking like its listener. Without one, no_socket with a
/// code for which isWouldBlock is true.
Socket acceptFrom(Socket listener);

/// Connects to a numeric address or a host name, waiting until it is there, refused or too late; a
/// name with several addresses is tried at each. The connected socket is non-blocking. Looking up
/// a name takes as long as the system takes for it.
Socket connectTo(const std::string &host, int port, int timeout_ms = connect_timeout_ms);

/// Bytes that wait to be received, or -1.
int waitingBytes(Socket socket);

/// Whether nothing more will come than what waits already: the peer has closed or died, or the
/// connection failed. A machine that vanishes without a word is noticed in about half a minute; if
/// it had long stopped reading, in some minutes. One that answers is there, even if it never reads.
/// Windows, where data is on its way to the vanished, has a patience of its own: five attempts.
bool isPeerGone(Socket socket, int patience_ms = peer_patience_ms);

/// Whether the peer has ended its sending side, and for all that is known still reads: a peer that
/// has closed looks the same until something is sent to it.
bool isPeerDone(Socket socket);

/// Copies up to `size` waiting bytes and leaves them in the socket; the number copied, 0 at the
/// end of the connection, or -1. REQUIRES: size > 0, here and in receive and send.
int peek(Socket socket, void *buffer, int size);

/// Takes up to `size` waiting bytes; the number taken, 0 at the end of the connection, or -1.
int receive(Socket socket, void *buffer, int size);

/// Hands up to `size` bytes to the system; the number taken over, or -1. A peer that has closed is
/// an error, never a signal.
int send(Socket socket, const void *buffer, int size);

/// 0, or the system's answer if it refused.
int closeSocket(Socket socket);

} // namespace sv::platform
