#include "selvane/input/InputManager.h"

#include "selvane/core/Config.h"
#include "selvane/core/EventMouse.h"
#include "selvane/core/LogManager.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/input/sfmlKeys.h"
#include "selvane/loop/GameManager.h"

#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Window/Event.hpp>
#include <SFML/Window/Keyboard.hpp>
#include <SFML/Window/Mouse.hpp>

namespace sv {

namespace {

struct Button {
    sf::Mouse::Button library;
    EventMouseButton engine;
};

/// In the order of polling.
constexpr Button buttons[] = {
    {sf::Mouse::Left, LEFT}, {sf::Mouse::Right, RIGHT}, {sf::Mouse::Middle, MIDDLE}};

EventMouseButton toEngine(sf::Mouse::Button library) {
    for (const Button &button : buttons) {
        if (button.library == library)
            return button.engine;
    }
    return UNDEFINED_MOUSE_BUTTON;
}

EventMouse mouseEvent(EventMouseAction action, EventMouseButton button, int x, int y) {
    EventMouse event;
    event.setMouseAction(action);
    event.setMouseButton(button);
    event.setMousePosition(DisplayManager::getInstance().windowToSpaces(x, y));
    return event;
}

/// Whether what is held counts: keyboard and mouse themselves are asked, whichever window they
/// serve.
bool isHoldingHeard() {
    return Config::getInstance().getBackgroundInput() ||
           DisplayManager::getInstance().getWindow()->hasFocus();
}

} // namespace

InputManager &InputManager::getInstance() {
    static InputManager &instance = *new InputManager;
    return instance;
}

InputManager::InputManager() {
    setType("InputManager");
}

bool InputManager::isValid(const std::string &event_type) const {
    return event_type == KEYBOARD_EVENT || event_type == MOUSE_EVENT;
}

int InputManager::startUp() {
    if (isStarted())
        return refuseSecondStart();
    is_window_closed = false;
    DisplayManager &display = DisplayManager::getInstance();
    if (Config::getInstance().getHeadless()) {
        logLine(1, "InputManager::startUp(): not doing input since in headless mode.");
    } else if (!display.isStarted()) {
        return logFailure("InputManager::startUp(): Error starting InputManager. DisplayManager "
                          "must be started first.");
    } else if (display.getWindow() != nullptr) {
        logLine(2, "InputManager::startUp(): Keyboard repeated disabled.");
    } else {
        logLine("InputManager::startUp(): Warning - DisplayManager unexpectedly returned null "
                "window! Cannot disable keyboard repeat.");
    }
    display.setKeyRepeat(false);
    Manager::startUp();
    logLine(5, "InputManager::startUp(): successfully started.");
    return 0;
}

void InputManager::shutDown() {
    DisplayManager &display = DisplayManager::getInstance();
    display.setKeyRepeat(true);
    if (display.getWindow() != nullptr)
        logLine(2, "InputManager::shutDown(): Keyboard repeat enabled.");
    Manager::shutDown();
    logLine(5, "InputManager::shutDown(): successfully stopped.");
}

void InputManager::getInput() {
    if (Config::getInstance().getHeadless())
        return;
    if (DisplayManager::getInstance().getWindow() == nullptr) {
        logLine("InputManager::getInput(): DisplayManager unexpectedly returned null window!");
        return;
    }
    if (takeQueue() && isHoldingHeard() && pollMouse())
        pollKeys();
}

/// The window as it is now: a handler may have started the display anew, in full screen, say. Null
/// if there is none any more, and the game is over if it was closed.
sf::RenderWindow *InputManager::presentWindow() {
    sf::RenderWindow *p_window = DisplayManager::getInstance().getWindow();
    if (p_window == nullptr || p_window->isOpen())
        return p_window;
    endGame();
    return nullptr;
}

void InputManager::endGame() {
    logLine(1, "InputManager::getInput(): Window close event. Setting game over.");
    is_window_closed = true;
    GameManager::getInstance().setGameOver();
}

/// False if the window has gone, and the step's input with it; so do those that poll.
bool InputManager::takeQueue() {
    sf::Event event{};
    while (sf::RenderWindow *p_window = presentWindow()) {
        if (!p_window->pollEvent(event))
            return true;
        if (event.type == sf::Event::Closed) {
            endGame();
            return false;
        }
        deliver(event);
    }
    return false;
}

void InputManager::deliver(const sf::Event &event) {
    switch (event.type) {
    case sf::Event::KeyPressed:
    case sf::Event::KeyReleased: {
        EventKeyboard key = toEventKeyboard(event);
        key.setKeyboardAction(event.type == sf::Event::KeyPressed ? KEY_PRESSED : KEY_RELEASED);
        onEvent(&key);
        break;
    }
    case sf::Event::MouseMoved: {
        const EventMouse moved =
            mouseEvent(MOVED, UNDEFINED_MOUSE_BUTTON, event.mouseMove.x, event.mouseMove.y);
        onEvent(&moved);
        break;
    }
    case sf::Event::MouseButtonPressed: {
        const EventMouse clicked = mouseEvent(CLICKED, toEngine(event.mouseButton.button),
                                              event.mouseButton.x, event.mouseButton.y);
        onEvent(&clicked);
        break;
    }
    default:
        break;
    }
}

EventKeyboard InputManager::toEventKeyboard(const sf::Event &key_event) const {
    return toEventKeyboard(key_event.key);
}

EventKeyboard InputManager::eventOfKey(int library_key) const {
    EventKeyboard event;
    event.setKey(toEngineKey(library_key));
    logLine(15, "InputManager::toEventKeyboard(): Keyboard event '%c' (%d)", event.getKey(),
            library_key);
    return event;
}

bool InputManager::pollMouse() {
    const sf::Vector2i position =
        sf::Mouse::getPosition(*DisplayManager::getInstance().getWindow());
    EventMouse event = mouseEvent(PRESSED, UNDEFINED_MOUSE_BUTTON, position.x, position.y);
    for (const Button &button : buttons) {
        if (!sf::Mouse::isButtonPressed(button.library))
            continue;
        event.setMouseButton(button.engine);
        onEvent(&event);
        if (presentWindow() == nullptr)
            return false;
    }
    return true;
}

void InputManager::pollKeys() {
    for (const KeyRun &run : polledKeys()) {
        for (int i = 0; i < run.count; ++i) {
            if (!sf::Keyboard::isKeyPressed(static_cast<sf::Keyboard::Key>(run.library + i)))
                continue;
            EventKeyboard event;
            event.setKey(static_cast<Keyboard::Key>(run.engine + i));
            event.setKeyboardAction(KEY_DOWN);
            onEvent(&event);
            if (presentWindow() == nullptr)
                return;
        }
    }
}

} // namespace sv
