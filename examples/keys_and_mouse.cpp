// Keys and mouse: the arrows move the @ for as long as they are held, space leaves a mark where it
// stands, a click leaves a star where the mouse is, and Q quits.

#include "selvane/selvane.h"

sv::DisplayManager &display() {
    return sv::DisplayManager::getInstance();
}

/// A character that stays.
class Mark : public sv::Object {
  public:
    Mark(sv::Vector where, char new_ch, sv::Color new_color) : ch(new_ch), color(new_color) {
        setType("Mark");
        setSolidness(sv::SPECTRAL); // Or the @ would collide with it.
        setAltitude(1);             // Under the @, which is at 2.
        setPosition(where);
    }

    int draw() override { return display().drawCh(getPosition(), ch, color); }

  private:
    char ch;
    sv::Color color;
};

class Walker : public sv::Object {
  public:
    Walker() {
        setType("Walker");
        setPosition({40, 12});
        registerInterest(sv::KEYBOARD_EVENT);
    }

    int draw() override { return display().drawCh(getPosition(), '@', sv::YELLOW); }

    int eventHandler(const sv::Event *p_event) override {
        const auto *p_key = sv::eventCast<sv::EventKeyboard>(p_event);
        if (!p_key)
            return Object::eventHandler(p_event);
        if (p_key->getKeyboardAction() == sv::KEY_PRESSED)
            return press(p_key->getKey());
        if (p_key->getKeyboardAction() == sv::KEY_DOWN) // One in each step, while it is held.
            return hold(p_key->getKey());
        return 0;
    }

  private:
    int press(sv::Keyboard::Key key) {
        if (key == sv::Keyboard::SPACE)
            sv::spawn<Mark>(getPosition(), '#', sv::GREEN);
        else if (key == sv::Keyboard::Q)
            sv::GameManager::getInstance().setGameOver();
        return 1;
    }

    int hold(sv::Keyboard::Key key) {
        switch (key) {
        case sv::Keyboard::LEFTARROW:
            return setPosition(getPosition() + sv::Vector{-0.5F, 0});
        case sv::Keyboard::RIGHTARROW:
            return setPosition(getPosition() + sv::Vector{0.5F, 0});
        case sv::Keyboard::UPARROW:
            return setPosition(getPosition() + sv::Vector{0, -0.25F});
        case sv::Keyboard::DOWNARROW:
            return setPosition(getPosition() + sv::Vector{0, 0.25F});
        default:
            return 0;
        }
    }
};

/// Where the mouse is.
class Pointer : public sv::Object {
  public:
    Pointer() {
        setType("Pointer");
        setSolidness(sv::SPECTRAL);
        setAltitude(sv::MAX_ALTITUDE);
        registerInterest(sv::MOUSE_EVENT);
    }

    int draw() override { return display().drawCh(getPosition(), '+', sv::RED); }

    int eventHandler(const sv::Event *p_event) override {
        const auto *p_mouse = sv::eventCast<sv::EventMouse>(p_event);
        if (!p_mouse)
            return Object::eventHandler(p_event);
        if (p_mouse->getMouseAction() == sv::MOVED)
            setPosition(p_mouse->getMousePosition());
        else if (p_mouse->getMouseAction() == sv::CLICKED)
            sv::spawn<Mark>(p_mouse->getMousePosition(), '*', sv::CYAN);
        return 1;
    }
};

int main() {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_started = game.startUp() == 0;
    if (is_started) {
        sv::spawn<Walker>();
        sv::spawn<Pointer>();
        game.run();
    }
    game.shutDown();
    return is_started ? 0 : 1;
}
