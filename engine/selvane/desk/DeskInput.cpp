#include "selvane/desk/DeskInput.h"

#include "selvane/core/Keyboard.h"
#include "selvane/input/sfmlKeys.h"

#include <utility>

namespace sv {

namespace {

using Kind = InputItem::Kind;

/// None for keys of the game. F5 is DeskKey's first, and so on.
std::optional<DeskKey> deskKey(int sfml_key) {
    const int place = sfml_key - toSfmlKey(Keyboard::F5);
    if (place < 0 || place > static_cast<int>(DeskKey::PICTURE))
        return std::nullopt;
    return static_cast<DeskKey>(place);
}

bool isOfKey(const InputItem &item) {
    return item.kind == Kind::KEY_PRESSED || item.kind == Kind::KEY_RELEASED;
}

} // namespace

DeskInput::DeskInput(InputSource &new_source, std::function<void(DeskKey)> new_on_key,
                     std::function<void()> new_on_step)
    : source(new_source), on_key(std::move(new_on_key)), on_step(std::move(new_on_step)) {}

void DeskInput::beginStep() {
    source.beginStep();
    on_step();
}

/// Whether it is none of the game's business: a key of the desk, or one released that was pressed
/// while the game stood still.
bool DeskInput::take(const InputItem &item) {
    if (!isOfKey(item))
        return false;
    const auto key = deskKey(item.sfml_key);
    if (key && item.kind == Kind::KEY_PRESSED)
        on_key(*key);
    return key || (item.kind == Kind::KEY_RELEASED && unheard.erase(item.sfml_key) > 0);
}

bool DeskInput::takeMeanwhile() {
    while (source.getState() == State::OPEN) {
        const auto item = source.next();
        if (!item)
            return true;
        if (take(*item))
            continue;
        if (item->kind == Kind::KEY_PRESSED)
            unheard.insert(item->sfml_key);
        if (item->kind == Kind::KEY_RELEASED || item->kind == Kind::WINDOW_CLOSED)
            waiting.push_back(*item);
        if (item->kind == Kind::WINDOW_CLOSED)
            return false;
    }
    return false;
}

std::optional<InputItem> DeskInput::next() {
    if (!waiting.empty()) {
        const InputItem first = waiting.front();
        waiting.pop_front();
        return first;
    }
    while (const auto item = source.next())
        if (!take(*item))
            return item;
    return std::nullopt;
}

bool DeskInput::isKeyDown(int sfml_key) {
    return !deskKey(sfml_key) && source.isKeyDown(sfml_key);
}

} // namespace sv
