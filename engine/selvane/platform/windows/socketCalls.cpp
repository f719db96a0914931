#include "selvane/platform/socketCalls.h"

#include "selvane/platform/windows/utf8.h"

#include <memory>
// Needs winsock2.h before it.
#include <mstcpip.h>

namespace sv::platform {

namespace {

// After 10 s of silence the system asks whether the peer is there; it gives up after ten questions.
constexpr u_long keepalive_idle_ms = 10000;
constexpr u_long keepalive_interval_ms = 1500;

} // namespace

int lastCallError() {
    return WSAGetLastError();
}

int lookupError(int code) {
    return code;
}

Socket makeSocket(int family) {
    const SOCKET made = ::socket(family, SOCK_STREAM, IPPROTO_TCP);
    if (made == INVALID_SOCKET)
        return fail(WSAGetLastError());
    u_long on = 1;
    if (answer(ioctlsocket(made, static_cast<long>(FIONBIO), &on)) == 0)
        return static_cast<Socket>(made);
    closesocket(made);
    return no_socket;
}

void keepAlive(Handle socket) {
    tcp_keepalive keepalive{1, keepalive_idle_ms, keepalive_interval_ms};
    DWORD unused = 0;
    WSAIoctl(socket, SIO_KEEPALIVE_VALS, &keepalive, sizeof keepalive, nullptr, 0, &unused, nullptr,
             nullptr);
}

// SO_REUSEADDR stays off: here it would let two programs listen on one port, and a port is free
// without it while its last connections fade away.
int allowPortReuse(Handle /*listener*/) {
    return 0;
}

int awaitOutcome(Handle socket, int timeout_ms) {
    fd_set connected{};
    fd_set failed{};
    FD_SET(socket, &connected);
    FD_SET(socket, &failed);
    timeval timeout{timeout_ms / 1000, timeout_ms % 1000 * 1000};
    return select(0, nullptr, &connected, &failed, &timeout);
}

int closeHandle(Handle socket) {
    return closesocket(socket);
}

int startSockets() {
    WSADATA details{};
    const int code = WSAStartup(MAKEWORD(2, 2), &details);
    return code == 0 ? 0 : fail(code);
}

bool isWouldBlock(int code) {
    return code == WSAEWOULDBLOCK;
}

std::string socketErrorText(int code) {
    wchar_t *made = nullptr;
    FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, static_cast<DWORD>(code), 0, reinterpret_cast<wchar_t *>(&made), 0, nullptr);
    const std::unique_ptr<wchar_t, decltype(&LocalFree)> message(made, &LocalFree);
    const std::wstring_view text = message ? message.get() : L"";
    const std::wstring_view line = text.substr(0, text.find_first_of(L"\r\n"));
    return line.empty() ? "unknown error" : toUtf8(line);
}

// Here an accepted socket is non-blocking if its listener is.
Socket acceptFrom(Socket listener) {
    const SOCKET accepted = accept(toHandle(listener), nullptr, nullptr);
    if (accepted == INVALID_SOCKET)
        return fail(WSAGetLastError());
    configure(accepted);
    return static_cast<Socket>(accepted);
}

int waitingBytes(Socket socket) {
    u_long bytes = 0;
    const int asked = answer(ioctlsocket(toHandle(socket), static_cast<long>(FIONREAD), &bytes));
    return asked == 0 ? static_cast<int>(bytes) : -1;
}

// Wine, unlike Windows, sees the end only after the bytes before it have been taken.
bool isPeerGone(Socket socket, int /*patience_ms*/) {
    WSAPOLLFD asked{toHandle(socket), POLLRDNORM, 0};
    const int answered = WSAPoll(&asked, 1, 0);
    return socket == no_socket || answered < 0 ||
           (asked.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

bool isPeerDone(Socket socket) {
    WSAPOLLFD asked{toHandle(socket), POLLRDNORM, 0};
    return WSAPoll(&asked, 1, 0) > 0 && (asked.revents & (POLLHUP | POLLERR | POLLNVAL)) == POLLHUP;
}

} // namespace sv::platform
