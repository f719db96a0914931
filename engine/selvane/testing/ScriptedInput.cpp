#include "selvane/testing/ScriptedInput.h"

#include "selvane/input/sfmlKeys.h"

namespace sv {

void ScriptedInput::pressKey(Keyboard::Key key) {
    const int sfml_key = toSfmlKey(key);
    if (keys_down.insert(sfml_key).second)
        items.push_back({.kind = InputItem::Kind::KEY_PRESSED, .sfml_key = sfml_key});
}

void ScriptedInput::releaseKey(Keyboard::Key key) {
    const int sfml_key = toSfmlKey(key);
    if (keys_down.erase(sfml_key) > 0)
        items.push_back({.kind = InputItem::Kind::KEY_RELEASED, .sfml_key = sfml_key});
}

void ScriptedInput::moveMouse(Vector cell) {
    mouse = cell;
    items.push_back({.kind = InputItem::Kind::MOUSE_MOVED, .mouse = mouse});
}

void ScriptedInput::pressButton(EventMouseButton button) {
    if (buttons_down.insert(button).second)
        items.push_back(
            {.kind = InputItem::Kind::BUTTON_PRESSED, .button = button, .mouse = mouse});
}

void ScriptedInput::releaseButton(EventMouseButton button) {
    buttons_down.erase(button);
}

void ScriptedInput::typeCharacter(char32_t character) {
    items.push_back({.kind = InputItem::Kind::TEXT_TYPED, .character = character});
}

std::optional<InputItem> ScriptedInput::next() {
    if (items.empty())
        return std::nullopt;
    const InputItem item = items.front();
    items.pop_front();
    return item;
}

} // namespace sv
