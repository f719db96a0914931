#include "selvane/input/WindowInput.h"

#include "selvane/display/DisplayManager.h"

#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Window/Event.hpp>
#include <SFML/Window/Keyboard.hpp>
#include <SFML/Window/Mouse.hpp>

namespace sv {

namespace {

sf::RenderWindow *window() {
    return DisplayManager::getInstance().getEventWindow();
}

Vector cellAt(int x, int y) {
    return DisplayManager::getInstance().windowToSpaces(x, y);
}

EventMouseButton toEngineButton(sf::Mouse::Button button) {
    switch (button) {
    case sf::Mouse::Left:
        return LEFT;
    case sf::Mouse::Right:
        return RIGHT;
    case sf::Mouse::Middle:
        return MIDDLE;
    default:
        return UNDEFINED_MOUSE_BUTTON;
    }
}

/// None for a control character: its key says it.
std::optional<InputItem> typed(char32_t character) {
    constexpr char32_t first_delete = 0x7F;
    constexpr char32_t last_control = 0x9F;
    if (character < U' ' || (first_delete <= character && character <= last_control))
        return std::nullopt;
    return InputItem{.kind = InputItem::Kind::TEXT_TYPED, .character = character};
}

/// None for events that no object is sent.
std::optional<InputItem> toItem(const sf::Event &event) {
    using Kind = InputItem::Kind;
    switch (event.type) {
    case sf::Event::Closed:
        return InputItem{.kind = Kind::WINDOW_CLOSED};
    case sf::Event::KeyPressed:
        return InputItem{.kind = Kind::KEY_PRESSED, .sfml_key = event.key.code};
    case sf::Event::KeyReleased:
        return InputItem{.kind = Kind::KEY_RELEASED, .sfml_key = event.key.code};
    case sf::Event::MouseMoved:
        return InputItem{.kind = Kind::MOUSE_MOVED,
                         .mouse = cellAt(event.mouseMove.x, event.mouseMove.y)};
    case sf::Event::MouseButtonPressed:
        return InputItem{.kind = Kind::BUTTON_PRESSED,
                         .button = toEngineButton(event.mouseButton.button),
                         .mouse = cellAt(event.mouseButton.x, event.mouseButton.y)};
    case sf::Event::TextEntered:
        return typed(event.text.unicode);
    default:
        return std::nullopt;
    }
}

} // namespace

InputSource::State WindowInput::getState() {
    const sf::RenderWindow *present = window();
    if (!present)
        return State::ABSENT;
    const bool is_open = present->isOpen() && !DisplayManager::getInstance().isLost();
    return is_open ? State::OPEN : State::CLOSED;
}

std::optional<InputItem> WindowInput::next() {
    sf::Event event{};
    while (window()->pollEvent(event))
        if (const auto item = toItem(event))
            return item;
    return std::nullopt;
}

bool WindowInput::hasFocus() {
    return window()->hasFocus();
}

bool WindowInput::isKeyDown(int sfml_key) {
    return sf::Keyboard::isKeyPressed(static_cast<sf::Keyboard::Key>(sfml_key));
}

bool WindowInput::isButtonDown(EventMouseButton button) {
    constexpr sf::Mouse::Button buttons[] = {sf::Mouse::Left, sf::Mouse::Right, sf::Mouse::Middle};
    return sf::Mouse::isButtonPressed(buttons[button]);
}

Vector WindowInput::mousePosition() {
    const sf::Vector2i position = sf::Mouse::getPosition(*window());
    return cellAt(position.x, position.y);
}

} // namespace sv
