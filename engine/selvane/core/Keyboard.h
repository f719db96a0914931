/// The engine's keys. Every other key has SFML's number plus OTHER_KEYS; keys unknown to SFML
/// are 96.
#pragma once

namespace sv {

struct Keyboard {
    enum Key : int {
        UNDEFINED_KEY = -1,
        SPACE = 0,
        RETURN,
        ESCAPE,
        TAB,
        LEFTARROW,
        RIGHTARROW,
        UPARROW,
        DOWNARROW,
        PAUSE,
        MINUS, ///< These two and MULTIPLY stand on the numeric keypad.
        PLUS,
        TILDE,
        PERIOD,
        COMMA,
        SLASH,
        EQUAL,
        BACKSLASH,
        MULTIPLY,
        QUOTE,
        SEMICOLON,
        LEFTCONTROL,
        RIGHTCONTROL,
        LEFTSHIFT,
        RIGHTSHIFT,
        // clang-format off
        F1, F2, F3, F4, F5, F6, F7, F8, F9, F10, F11, F12,
        A, B, C, D, E, F, G, H, I, J, K, L, M, N, O, P, Q, R, S, T, U, V, W, X, Y, Z,
        NUM1, NUM2, NUM3, NUM4, NUM5, NUM6, NUM7, NUM8, NUM9, NUM0,
        // clang-format on
        BACKSPACE,
    };

    static constexpr int OTHER_KEYS = 97;
};

// Games and saved key settings use these numbers.
static_assert(Keyboard::RIGHTSHIFT == 23 && Keyboard::F1 == 24 && Keyboard::A == 36 &&
              Keyboard::NUM1 == 62 && Keyboard::NUM0 == 71 && Keyboard::BACKSPACE == 72);

} // namespace sv
