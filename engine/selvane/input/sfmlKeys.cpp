#include "selvane/input/sfmlKeys.h"

#include <SFML/Window/Keyboard.hpp>

namespace sv {

namespace {

using Library = sf::Keyboard;

constexpr KeyRun polled_keys[] = {
    {Library::Up, Keyboard::UPARROW},
    {Library::Down, Keyboard::DOWNARROW},
    {Library::Left, Keyboard::LEFTARROW},
    {Library::Right, Keyboard::RIGHTARROW},
    {Library::Space, Keyboard::SPACE},
    {Library::Enter, Keyboard::RETURN},
    {Library::Tab, Keyboard::TAB},
    {Library::Escape, Keyboard::ESCAPE},
    {Library::Pause, Keyboard::PAUSE},
    {Library::Subtract, Keyboard::MINUS},
    {Library::Add, Keyboard::PLUS},
    {Library::Tilde, Keyboard::TILDE},
    {Library::Period, Keyboard::PERIOD},
    {Library::Comma, Keyboard::COMMA},
    {Library::Slash, Keyboard::SLASH},
    {Library::Equal, Keyboard::EQUAL},
    {Library::Backslash, Keyboard::BACKSLASH},
    {Library::Multiply, Keyboard::MULTIPLY},
    {Library::Quote, Keyboard::QUOTE},
    {Library::Semicolon, Keyboard::SEMICOLON},
    {Library::LControl, Keyboard::LEFTCONTROL},
    {Library::RControl, Keyboard::RIGHTCONTROL},
    {Library::LShift, Keyboard::LEFTSHIFT},
    {Library::RShift, Keyboard::RIGHTSHIFT},
    {Library::F1, Keyboard::F1, 10},
    {Library::A, Keyboard::A, 26},
    {Library::Num1, Keyboard::NUM1, 9},
    {Library::Num0, Keyboard::NUM0},
    {Library::Num0, Keyboard::BACKSPACE},
};

constexpr KeyRun other_keys[] = {
    {Library::F11, Keyboard::F11, 2},
    {Library::Backspace, Keyboard::BACKSPACE},
};

static_assert(Library::F10 == Library::F1 + 9 && Library::F12 == Library::F11 + 1 &&
              Library::Z == Library::A + 25 && Library::Num9 == Library::Num1 + 8);

} // namespace

std::span<const KeyRun> polledKeys() {
    return polled_keys;
}

Keyboard::Key toEngineKey(int library_key) {
    using Runs = std::span<const KeyRun>;
    for (const Runs runs : {Runs(polled_keys), Runs(other_keys)}) {
        // The first that fits: Num0 is no backspace here.
        for (const KeyRun &run : runs) {
            if (run.library <= library_key && library_key < run.library + run.count)
                return static_cast<Keyboard::Key>(run.engine + (library_key - run.library));
        }
    }
    return static_cast<Keyboard::Key>(library_key + Keyboard::OTHER_KEYS);
}

} // namespace sv
