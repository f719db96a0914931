#include "selvane/input/InputManager.h"

#include "selvane/core/Config.h"
#include "selvane/core/EventMouse.h"
#include "selvane/core/EventText.h"
#include "selvane/core/LogManager.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/input/WindowInput.h"
#include "selvane/input/sfmlKeys.h"
#include "selvane/loop/GameManager.h"
#include "selvane/outside/Outside.h"
#include "selvane/platform/process.h"

#include <SFML/Window/Event.hpp>

namespace sv {

namespace {

WindowInput &windowInput() {
    static WindowInput &instance = *new WindowInput;
    return instance;
}

EventMouse mouseEvent(EventMouseAction action, EventMouseButton button, Vector position) {
    EventMouse event;
    event.setMouseAction(action);
    event.setMouseButton(button);
    event.setMousePosition(position);
    return event;
}

} // namespace

InputManager &InputManager::getInstance() {
    static InputManager &instance = *new InputManager;
    return instance;
}

InputManager::InputManager() : source(windowInput()) {
    setType("InputManager");
}

bool InputManager::isValid(const std::string &event_type) const {
    return event_type == KEYBOARD_EVENT || event_type == MOUSE_EVENT || event_type == TEXT_EVENT;
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
    } else if (display.getEventWindow()) {
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
    if (display.getEventWindow())
        logLine(2, "InputManager::shutDown(): Keyboard repeat enabled.");
    Manager::shutDown();
    logLine(5, "InputManager::shutDown(): successfully stopped.");
}

void InputManager::setSource(InputSource *new_source) {
    source = OutsideInput(new_source ? *new_source : windowInput());
}

void InputManager::reset() {
    is_window_closed = false;
}

void InputManager::getInput() {
    Outside &outside = Outside::getInstance();
    const bool has_input = hasInput();
    if (has_input)
        source.beginStep();
    if (has_input && outside.isReplaying())
        takeUnheard();
    if (!outside.ask(Channel::INPUT, [=] { return has_input; }))
        return;
    if (source.getState() == InputSource::State::ABSENT) {
        logLine("InputManager::getInput(): DisplayManager unexpectedly returned null window!");
        return;
    }
    if (takeQueue() && isHoldingHeard() && pollMouse())
        pollKeys();
}

bool InputManager::hasInput() const {
    return OutsideInput::isStopAsked() || &source.getSource() != &windowInput() ||
           !Config::getInstance().getHeadless();
}

/// The input of a person who watches.
void InputManager::takeUnheard() {
    InputSource &live = source.getSource();
    while (live.getState() == InputSource::State::OPEN) {
        const std::optional<InputItem> item = live.next();
        if (!item)
            return;
        const auto listener = unheard_listener; // It may set another one.
        if (listener)
            listener(*item);
    }
}

/// Whether there is a window still: a handler may have started the display anew, in full screen,
/// say. The game is over if it was closed.
bool InputManager::isWindowOpen() {
    const InputSource::State state = source.getState();
    if (state == InputSource::State::CLOSED)
        endGame();
    return state == InputSource::State::OPEN;
}

void InputManager::endGame() {
    if (OutsideInput::isStopAsked())
        logLine("InputManager::getInput(): Note! Signal %d ends the game.", platform::stopSignal());
    logLine(1, "InputManager::getInput(): Window close event. Setting game over.");
    is_window_closed = true;
    GameManager::getInstance().setGameOver();
}

/// False if the window has gone, and the step's input with it; so do those that poll.
bool InputManager::takeQueue() {
    while (isWindowOpen()) {
        const std::optional<InputItem> item = source.next();
        if (!item)
            return true;
        if (item->kind == InputItem::Kind::WINDOW_CLOSED) {
            endGame();
            return false;
        }
        deliver(*item);
    }
    return false;
}

void InputManager::deliver(const InputItem &item) {
    switch (item.kind) {
    case InputItem::Kind::WINDOW_CLOSED:
        break;
    case InputItem::Kind::KEY_PRESSED:
    case InputItem::Kind::KEY_RELEASED: {
        EventKeyboard key = eventOfKey(item.sfml_key);
        key.setKeyboardAction(item.kind == InputItem::Kind::KEY_PRESSED ? KEY_PRESSED
                                                                        : KEY_RELEASED);
        onEvent(&key);
        break;
    }
    case InputItem::Kind::MOUSE_MOVED: {
        const EventMouse moved = mouseEvent(MOVED, UNDEFINED_MOUSE_BUTTON, item.mouse);
        onEvent(&moved);
        break;
    }
    case InputItem::Kind::BUTTON_PRESSED: {
        const EventMouse clicked = mouseEvent(CLICKED, item.button, item.mouse);
        onEvent(&clicked);
        break;
    }
    case InputItem::Kind::TEXT_TYPED: {
        const EventText typed(item.character);
        onEvent(&typed);
        break;
    }
    }
}

EventKeyboard InputManager::toEventKeyboard(const sf::Event &key_event) const {
    return toEventKeyboard(key_event.key);
}

EventKeyboard InputManager::eventOfKey(int sfml_key) const {
    EventKeyboard event;
    event.setKey(toEngineKey(sfml_key));
    logLine(15, "InputManager::toEventKeyboard(): Keyboard event '%c' (%d)", event.getKey(),
            sfml_key);
    return event;
}

/// Whether what is held counts, whichever window has the focus.
bool InputManager::isHoldingHeard() {
    return Config::getInstance().getBackgroundInput() || source.hasFocus();
}

bool InputManager::pollMouse() {
    EventMouse event = mouseEvent(PRESSED, UNDEFINED_MOUSE_BUTTON, source.mousePosition());
    for (const EventMouseButton button : {LEFT, RIGHT, MIDDLE}) {
        if (!source.isButtonDown(button))
            continue;
        event.setMouseButton(button);
        onEvent(&event);
        if (!isWindowOpen())
            return false;
    }
    return true;
}

void InputManager::pollKeys() {
    for (const KeyRun &run : polledKeys()) {
        for (int i = 0; i < run.count; ++i) {
            if (!source.isKeyDown(run.sfml + i))
                continue;
            EventKeyboard event;
            event.setKey(static_cast<Keyboard::Key>(run.engine + i));
            event.setKeyboardAction(KEY_DOWN);
            onEvent(&event);
            if (!isWindowOpen())
                return;
        }
    }
}

} // namespace sv
