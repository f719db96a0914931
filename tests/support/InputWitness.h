/// An object that writes down what keys and mouse do.
#pragma once

#include "selvane/core/EventKeyboard.h"
#include "selvane/core/EventMouse.h"
#include "selvane/core/EventText.h"
#include "selvane/core/utf8.h"
#include "selvane/world/Object.h"

#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace test {

class InputWitness : public sv::Object {
  public:
    int eventHandler(const sv::Event *p_event) override {
        std::ostringstream text;
        if (const auto *key = sv::eventCast<sv::EventKeyboard>(p_event)) {
            const char *const actions[] = {"pressed ", "released ", "down "};
            text << actions[key->getKeyboardAction()] << key->getKey();
        } else if (const auto *mouse = sv::eventCast<sv::EventMouse>(p_event)) {
            const char *const actions[] = {"clicked ", "held ", "moved "};
            const sv::Vector at = mouse->getMousePosition();
            text << actions[mouse->getMouseAction()] << mouse->getMouseButton() << " at " << at.x
                 << " " << at.y;
        } else if (const auto *typed = sv::eventCast<sv::EventText>(p_event)) {
            text << "typed " << sv::toUtf8(std::u32string(1, typed->getCharacter()));
        }
        seen.push_back(text.str());
        if (on_event)
            on_event(seen.back());
        return 1;
    }

    /// What was seen since the last call.
    std::vector<std::string> take() { return std::exchange(seen, {}); }

    std::vector<std::string> seen;
    std::function<void(const std::string &event)> on_event;
};

} // namespace test
