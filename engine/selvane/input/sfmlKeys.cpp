#include "selvane/input/sfmlKeys.h"

#include <SFML/Window/Keyboard.hpp>

namespace sv {

namespace {

using Sfml = sf::Keyboard;

constexpr KeyRun polled_keys[] = {
    {Sfml::Up, Keyboard::UPARROW},
    {Sfml::Down, Keyboard::DOWNARROW},
    {Sfml::Left, Keyboard::LEFTARROW},
    {Sfml::Right, Keyboard::RIGHTARROW},
    {Sfml::Space, Keyboard::SPACE},
    {Sfml::Enter, Keyboard::RETURN},
    {Sfml::Tab, Keyboard::TAB},
    {Sfml::Escape, Keyboard::ESCAPE},
    {Sfml::Pause, Keyboard::PAUSE},
    {Sfml::Subtract, Keyboard::MINUS},
    {Sfml::Add, Keyboard::PLUS},
    {Sfml::Tilde, Keyboard::TILDE},
    {Sfml::Period, Keyboard::PERIOD},
    {Sfml::Comma, Keyboard::COMMA},
    {Sfml::Slash, Keyboard::SLASH},
    {Sfml::Equal, Keyboard::EQUAL},
    {Sfml::Backslash, Keyboard::BACKSLASH},
    {Sfml::Multiply, Keyboard::MULTIPLY},
    {Sfml::Quote, Keyboard::QUOTE},
    {Sfml::Semicolon, Keyboard::SEMICOLON},
    {Sfml::LControl, Keyboard::LEFTCONTROL},
    {Sfml::RControl, Keyboard::RIGHTCONTROL},
    {Sfml::LShift, Keyboard::LEFTSHIFT},
    {Sfml::RShift, Keyboard::RIGHTSHIFT},
    {Sfml::F1, Keyboard::F1, 10},
    {Sfml::A, Keyboard::A, 26},
    {Sfml::Num1, Keyboard::NUM1, 9},
    {Sfml::Num0, Keyboard::NUM0},
    {Sfml::Num0, Keyboard::BACKSPACE},
};

constexpr KeyRun other_keys[] = {
    {Sfml::F11, Keyboard::F11, 2},
    {Sfml::Backspace, Keyboard::BACKSPACE},
};

static_assert(Sfml::F10 == Sfml::F1 + 9 && Sfml::F12 == Sfml::F11 + 1 && Sfml::Z == Sfml::A + 25 &&
              Sfml::Num9 == Sfml::Num1 + 8);

} // namespace

std::span<const KeyRun> polledKeys() {
    return polled_keys;
}

Keyboard::Key toEngineKey(int sfml_key) {
    using Runs = std::span<const KeyRun>;
    for (const Runs runs : {Runs(polled_keys), Runs(other_keys)}) {
        // The first that fits: Num0 is no backspace here.
        for (const KeyRun &run : runs) {
            if (run.sfml <= sfml_key && sfml_key < run.sfml + run.count)
                return static_cast<Keyboard::Key>(run.engine + (sfml_key - run.sfml));
        }
    }
    return static_cast<Keyboard::Key>(sfml_key + Keyboard::OTHER_KEYS);
}

int toSfmlKey(Keyboard::Key key) {
    using Runs = std::span<const KeyRun>;
    for (const Runs runs : {Runs(other_keys), Runs(polled_keys)}) {
        // The other keys first: BACKSPACE is no Num0 here.
        for (const KeyRun &run : runs) {
            if (run.engine <= key && key < run.engine + run.count)
                return run.sfml + (key - run.engine);
        }
    }
    return key - Keyboard::OTHER_KEYS;
}

} // namespace sv
