#include "support/windowsAnswers.h"

#include <cwchar>
#include <utility>
#include <winsock2.h>
// Needs winsock2.h before it.
#include <timeapi.h>

namespace {

std::wstring error_text;
unsigned shortest_timer_ms = 1;

template<typename Function>
Function *real(const wchar_t *library, const char *name) {
    return reinterpret_cast<Function *>(
        reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(library), name)));
}

// Handles have more bits than an int, whatever the system uses of them. These use all below the
// sign: what keeps only 32 of them loses the socket.
constexpr SOCKET raised_by = 0x7FFF'FFFF'8000'0000;

SOCKET raised(SOCKET socket) {
    return socket == INVALID_SOCKET ? socket : socket + raised_by;
}

SOCKET lowered(SOCKET socket) {
    return socket == INVALID_SOCKET ? socket : socket - raised_by;
}

/// The system's function of the name Name::text, with the system's own socket.
template<typename Name, typename Function>
struct OnSocket;

template<typename Name, typename Result, typename... Rest>
struct OnSocket<Name, Result WINAPI(SOCKET, Rest...)> {
    static Result WINAPI call(SOCKET socket, Rest... rest) {
        const auto function = real<Result WINAPI(SOCKET, Rest...)>(L"ws2_32.dll", Name::text);
        const Result result = function(lowered(socket), rest...);
        if constexpr (std::is_same_v<Result, SOCKET>)
            return raised(result);
        else
            return result;
    }
};

SOCKET WINAPI raisedSocket(int family, int type, int protocol) {
    return raised(real<decltype(socket)>(L"ws2_32.dll", "socket")(family, type, protocol));
}

/// The sets come back as they went: whoever waits for one socket needs to know only how many.
int WINAPI selectLowered(int count, fd_set *p_read, fd_set *p_write, fd_set *p_failed,
                         PTIMEVAL p_timeout) {
    for (fd_set *p_set : {p_read, p_write, p_failed}) {
        for (u_int i = 0; p_set != nullptr && i < p_set->fd_count; ++i)
            p_set->fd_array[i] = lowered(p_set->fd_array[i]);
    }
    return real<decltype(select)>(L"ws2_32.dll", "select")(count, p_read, p_write, p_failed,
                                                           p_timeout);
}

DWORD WINAPI formatErrorText(DWORD /*flags*/, LPCVOID /*source*/, DWORD /*code*/,
                             DWORD /*language*/, LPWSTR buffer, DWORD /*size*/,
                             va_list * /*inserts*/) {
    if (error_text.empty())
        return 0;
    const std::size_t bytes = (error_text.size() + 1) * sizeof(wchar_t);
    auto *p_text = static_cast<wchar_t *>(LocalAlloc(LMEM_FIXED, bytes));
    std::wmemcpy(p_text, error_text.c_str(), error_text.size() + 1);
    *reinterpret_cast<wchar_t **>(buffer) = p_text;
    return static_cast<DWORD>(error_text.size());
}

MMRESULT WINAPI beginPeriod(UINT milliseconds) {
    return milliseconds < shortest_timer_ms
               ? static_cast<MMRESULT>(TIMERR_NOCANDO)
               : real<decltype(timeBeginPeriod)>(L"winmm.dll", "timeBeginPeriod")(milliseconds);
}

MMRESULT WINAPI endPeriod(UINT milliseconds) {
    return milliseconds < shortest_timer_ms
               ? static_cast<MMRESULT>(TIMERR_NOCANDO)
               : real<decltype(timeEndPeriod)>(L"winmm.dll", "timeEndPeriod")(milliseconds);
}

} // namespace

// A call of a library's function goes through a pointer of this name.
#define REPLACE(name, ...) decltype(&name) __imp_##name = __VA_ARGS__
#define REPLACE_ON_SOCKET(name)                                                                    \
    namespace {                                                                                    \
    struct name##Name {                                                                            \
        static constexpr char text[] = #name;                                                      \
    };                                                                                             \
    }                                                                                              \
    REPLACE(name, &OnSocket<name##Name, decltype(::name)>::call)

extern "C" {
REPLACE(FormatMessageW, &formatErrorText);
REPLACE(timeBeginPeriod, &beginPeriod);
REPLACE(timeEndPeriod, &endPeriod);
REPLACE(socket, &raisedSocket);
REPLACE(select, &selectLowered);
REPLACE_ON_SOCKET(WSAIoctl);
REPLACE_ON_SOCKET(accept);
REPLACE_ON_SOCKET(bind);
REPLACE_ON_SOCKET(closesocket);
REPLACE_ON_SOCKET(connect);
REPLACE_ON_SOCKET(getsockname);
REPLACE_ON_SOCKET(getsockopt);
REPLACE_ON_SOCKET(ioctlsocket);
REPLACE_ON_SOCKET(listen);
REPLACE_ON_SOCKET(recv);
REPLACE_ON_SOCKET(send);
REPLACE_ON_SOCKET(setsockopt);
}

// The one that is called by its own name.
int WINAPI WSAPoll(LPWSAPOLLFD asked, ULONG count, INT timeout_ms) {
    for (ULONG i = 0; i < count; ++i)
        asked[i].fd = lowered(asked[i].fd);
    return real<decltype(WSAPoll)>(L"ws2_32.dll", "WSAPoll")(asked, count, timeout_ms);
}

namespace test {

void answerErrorText(const std::wstring &text) {
    error_text = text;
}

void refuseTimersBelow(unsigned milliseconds) {
    shortest_timer_ms = milliseconds;
}

} // namespace test
