/// Turns input into events once a step: what happened since the last step, and which keys and
/// buttons are held. A held key thus gives an event in every step, and the system's key repeat is
/// off while this manager runs. What is held counts even while another window has the focus, unless
/// the configuration's "background_input" is false.
///
/// Input comes from the display manager's window, which must be started before, or from an
/// InputSource in its place. Game-loop thread only, which must be the one that opened the window.
#pragma once

#include "selvane/core/EventKeyboard.h"
#include "selvane/core/Manager.h"
#include "selvane/input/OutsideInput.h"

#include <functional>
#include <utility>

namespace sf {
class Event;
}

namespace sv {

class InputManager : public Manager {
  public:
    static InputManager &getInstance();

    /// True only for "sv-keyboard", "sv-mouse" and "sv-text".
    bool isValid(const std::string &event_type) const override;

    /// 0, or -1 if the display manager is not started. Without a window it starts, and reads
    /// nothing.
    int startUp() override;
    void shutDown() override;

    /// Whether the window was closed since the last start, or a signal came. A game that calls
    /// run() more than once, as one with a title sequence does, asks here whether to go on: run()
    /// begins anew.
    bool isWindowClosed() const { return is_window_closed; }

    /// The key of a key press or release as an event; its action is the caller's to set.
    ///
    /// REQUIRES: key_event is a KeyPressed or a KeyReleased.
    EventKeyboard toEventKeyboard(const sf::Event &key_event) const;

    /// The same of an sf::Event::KeyEvent, for a game that polls SFML's events itself. A template,
    /// since only SFML's own header can name that type.
    template<typename KeyEvent>
    EventKeyboard toEventKeyboard(const KeyEvent &key_event) const {
        return eventOfKey(key_event.code);
    }

    /// Puts another source in place of the window, headless or not; null puts the window back. The
    /// caller keeps it, and keeps it alive while it is in use.
    void setSource(InputSource *new_source);
    InputSource &getSource() { return source.getSource(); }

    // Called by the engine.

    /// Without a window only a source in its place has any, and a signal.
    bool hasInput() const;

    /// While a record is played, called with each item that the source gives: nobody else gets it.
    void setUnheardListener(std::function<void(const InputItem &)> listener) {
        unheard_listener = std::move(listener);
    }

    /// Delivers the input since the last call. A window that was closed, by the person or by the
    /// game, ends the game, as does a signal that asks the process to stop, and nothing after that
    /// is read in this step. A handler may stop the display manager and start it again, in full
    /// screen, say: the step's input goes on with the new window, and ends if there is none.
    void getInput();

    void reset() override;

  private:
    InputManager();

    EventKeyboard eventOfKey(int sfml_key) const;
    void takeUnheard();
    bool isWindowOpen();
    void endGame();
    bool takeQueue();
    void deliver(const InputItem &item);
    bool isHoldingHeard();
    bool pollMouse();
    void pollKeys();

    OutsideInput source;
    std::function<void(const InputItem &)> unheard_listener;
    bool is_window_closed = false;
};

} // namespace sv
