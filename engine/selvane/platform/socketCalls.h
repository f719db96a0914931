/// The socket calls that differ between the systems: posix/socketCalls.cpp and
/// windows/socketCalls.cpp define them, and those functions of sockets.h that have little in
/// common. sockets.cpp builds the other functions of sockets.h on them, for every system.
#pragma once

#include "selvane/platform/sockets.h"

#ifdef _WIN32
#include <winsock2.h>
// Needs winsock2.h before it.
#include <ws2tcpip.h>
#else
#include <cerrno>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#endif

#include <cstddef>

namespace sv::platform {

#ifdef _WIN32
using Handle = SOCKET;
using ByteCount = int;
inline constexpr int invalid_argument = WSAEINVAL;
inline constexpr int timed_out = WSAETIMEDOUT;
inline constexpr int connection_pending = WSAEWOULDBLOCK;
inline constexpr int send_flags = 0;
#else
using Handle = int;
using ByteCount = std::size_t;
inline constexpr int invalid_argument = EINVAL;
inline constexpr int timed_out = ETIMEDOUT;
inline constexpr int connection_pending = EINPROGRESS;
inline constexpr int send_flags = MSG_NOSIGNAL;
#endif

static_assert(sizeof(Socket) >= sizeof(Handle), "a handle must not lose bits");

inline Handle toHandle(Socket socket) {
    return static_cast<Handle>(socket);
}

/// Stores a code for lastSocketError(): the system's own does not last, since closing a half-made
/// socket overwrites it. Returns -1.
int fail(int code);

/// The result of a system call; below 0 the call has failed, and its code is stored.
int answer(std::ptrdiff_t result);

/// Makes a connection keep receive_buffer_bytes, send without delay and notice a vanished peer. A
/// system that refuses one of these has its own good default.
void configure(Handle socket);

void setOption(Handle socket, int level, int option, int value);

// Defined for each system:

/// The code of the last system call that failed.
int lastCallError();

/// The code of a failed getaddrinfo() that returned `code`.
int lookupError(int code);

/// A new non-blocking TCP socket, or no_socket with its code stored.
Socket makeSocket(int family);

/// Has the system ask a silent peer whether it is still there.
void keepAlive(Handle socket);

/// Lets a listener take a port whose last connections still fade away. 0, or -1.
int allowPortReuse(Handle listener);

/// Waits for a pending connection to succeed or fail: above 0; 0 after `timeout_ms`; or -1.
int awaitOutcome(Handle socket, int timeout_ms);

/// 0, or -1.
int closeHandle(Handle socket);

} // namespace sv::platform
