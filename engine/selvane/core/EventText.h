/// A character that was typed, as the keyboard's layout, its modifiers and its dead keys make it:
/// 'u', U+00FC, '?'. It comes beside the events of the keys, which say what was pressed and not
/// what that means. Backspace, return, escape and other control characters are keys only. Sent by
/// the input manager to registered objects.
#pragma once

#include "selvane/core/Event.h"

namespace sv {

class EventText : public Event {
  public:
    static constexpr const char *TYPE = TEXT_EVENT;

    EventText() : Event(TEXT_EVENT) {}
    explicit EventText(char32_t new_character) : Event(TEXT_EVENT), character(new_character) {}

    /// A code point; toUtf8() makes a text of several.
    void setCharacter(char32_t new_character) { character = new_character; }
    char32_t getCharacter() const { return character; }

  private:
    char32_t character = 0;
};

} // namespace sv
