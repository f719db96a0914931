/// SV_PRINTF_FORMAT(text, arguments) makes the compiler check a function's printf format against
/// its arguments. `text` and `arguments` are the positions of the format and of the first argument,
/// counted from 1, `this` included; `arguments` is 0 for a va_list.
#pragma once

#include <cstdio>

// MinGW has two families of printf functions. libstdc++ uses the one that supports %zu and %lld,
// which this macro names; the compiler's default is the other one.
#if defined(__MINGW_PRINTF_FORMAT)
#define SV_PRINTF_FORMAT(text, arguments)                                                          \
    __attribute__((format(__MINGW_PRINTF_FORMAT, text, arguments)))
#elif defined(__GNUC__)
#define SV_PRINTF_FORMAT(text, arguments) __attribute__((format(printf, text, arguments)))
#else
#define SV_PRINTF_FORMAT(text, arguments)
#endif
