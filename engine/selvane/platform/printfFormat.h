/// SV_PRINTF_FORMAT(text, arguments) marks a function that takes a printf text and its arguments,
/// so that the compiler checks one against the other: the places of both, counted from 1, `this`
/// included; 0 for `arguments` where they come as a va_list.
#pragma once

#include <cstdio>

// MinGW has two families of printf functions. libstdc++ chooses the one that knows %zu and %lld,
// and the macro names it; the compiler's own default there is the other.
#if defined(__MINGW_PRINTF_FORMAT)
#define SV_PRINTF_FORMAT(text, arguments)                                                          \
    __attribute__((format(__MINGW_PRINTF_FORMAT, text, arguments)))
#elif defined(__GNUC__)
#define SV_PRINTF_FORMAT(text, arguments) __attribute__((format(printf, text, arguments)))
#else
#define SV_PRINTF_FORMAT(text, arguments)
#endif
