// Text input: the player types a name, as the keyboard's layout makes it, Müller or Łukasz.
// Backspace takes the last character back, return is done.

#include "selvane/selvane.h"

#include <string>

sv::DisplayManager &display() {
    return sv::DisplayManager::getInstance();
}

class NameField : public sv::Object {
  public:
    NameField() {
        setType("NameField");
        setSolidness(sv::SPECTRAL);
        setPosition({30, 10});
        registerInterest(sv::TEXT_EVENT);
        registerInterest(sv::KEYBOARD_EVENT);
    }

    int eventHandler(const sv::Event *p_event) override {
        if (const auto *p_text = sv::eventCast<sv::EventText>(p_event))
            return type(p_text->getCharacter());
        const auto *p_key = sv::eventCast<sv::EventKeyboard>(p_event);
        if (!p_key)
            return Object::eventHandler(p_event);
        return p_key->getKeyboardAction() == sv::KEY_PRESSED ? press(p_key->getKey()) : 0;
    }

    int draw() override {
        const sv::Rgb line(120, 120, 160);
        const sv::Vector at = getPosition();
        display().drawString(at, "╭ What is your name? ╮", sv::LEFT_JUSTIFIED, line);
        display().drawString(at + sv::Vector{0, 1}, "│                    │", sv::LEFT_JUSTIFIED,
                             line);
        display().drawString(at + sv::Vector{0, 2}, "╰────────────────────╯", sv::LEFT_JUSTIFIED,
                             line);
        // Of one width, so that its background is a field.
        std::u32string field = name;
        if (!is_done && ++frames % 30 < 15) // The cursor blinks once a second.
            field += U'▏';
        field.resize(most_characters + 1, U' ');
        display().drawString(at + sv::Vector{2, 1}, sv::toUtf8(field), sv::LEFT_JUSTIFIED,
                             {255, 220, 120}, sv::Rgb(30, 30, 70));
        const std::string greeting = is_done ? "Hello, " + sv::toUtf8(name) + "!" : "";
        return display().drawString(at + sv::Vector{11, 5}, greeting, sv::CENTER_JUSTIFIED,
                                    sv::GREEN);
    }

  private:
    static constexpr std::size_t most_characters = 17;

    int type(char32_t character) {
        if (!is_done && name.size() < most_characters)
            name += character;
        return 1;
    }

    int press(sv::Keyboard::Key key) {
        if (key == sv::Keyboard::BACKSPACE && !name.empty() && !is_done)
            name.pop_back();
        if (key == sv::Keyboard::RETURN && !name.empty())
            is_done = true;
        return 1;
    }

    std::u32string name; // A code point for each cell, so that the last one is one character.
    bool is_done = false;
    int frames = 0;
};

int main() {
    sv::GameManager &game = sv::GameManager::getInstance();
    const bool is_started = game.startUp() == 0;
    if (is_started) {
        sv::spawn<NameField>();
        game.run();
    }
    game.shutDown();
    return is_started ? 0 : 1;
}
