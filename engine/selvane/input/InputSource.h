/// The door through which all input comes: the window, or in its place something that plays input
/// from a script or a file, or that passes it on from another source and writes it down. The input
/// manager turns both into events in the same way.
///
/// What the input manager asks, it asks on the game-loop thread.
#pragma once

#include "selvane/core/EventMouse.h"
#include "selvane/core/Vector.h"

#include <optional>

namespace sv {

/// Something that happened since the step before.
struct InputItem {
    enum class Kind {
        WINDOW_CLOSED,
        KEY_PRESSED,
        KEY_RELEASED,
        MOUSE_MOVED,
        BUTTON_PRESSED,
        TEXT_TYPED,
    };

    Kind kind = Kind::WINDOW_CLOSED;
    int sfml_key = -1;
    EventMouseButton button = UNDEFINED_MOUSE_BUTTON;
    char32_t character = 0; ///< The one typed, for TEXT_TYPED; never a control character.
    Vector mouse{};         ///< As in EventMouse: cells of the window, with their fraction.
};

class InputSource {
  public:
    enum class State { ABSENT, CLOSED, OPEN };

    virtual ~InputSource() = default;

    /// The first call of each step.
    virtual void beginStep() {}

    /// Of the window; asked again after each event, since a handler may close it or open another.
    virtual State getState() = 0;

    /// The next of what happened, in its order; none when all was given.
    virtual std::optional<InputItem> next() = 0;

    virtual bool hasFocus() = 0;

    // What is held down now. SFML's numbers for keys, as in sf::Keyboard.

    virtual bool isKeyDown(int sfml_key) = 0;
    virtual bool isButtonDown(EventMouseButton button) = 0;
    virtual Vector mousePosition() = 0;
};

} // namespace sv
