#include "selvane/input/OutsideInput.h"

#include "selvane/outside/Outside.h"
#include "selvane/platform/process.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <utility>

namespace sv {

namespace {

/// SFML has fewer, and games may make up some.
constexpr int most_sfml_key = 1000;
constexpr char32_t last_code_point = 0x10FFFF;

template<typename Live>
auto ask(Live live) {
    return Outside::getInstance().ask(Channel::INPUT, live);
}

Vector askVector(Vector v) {
    const auto ask_number = [](float number) {
        return std::bit_cast<float>(ask([=] { return std::bit_cast<std::int32_t>(number); }));
    };
    const float x = ask_number(v.x);
    return {x, ask_number(v.y)};
}

/// One of the values from `least` to `most`, also from a damaged record.
template<typename Value>
Value askValue(Value now, Value least, Value most) {
    const int number = ask([=] { return static_cast<int>(now); });
    return static_cast<Value>(std::clamp(number, static_cast<int>(least), static_cast<int>(most)));
}

} // namespace

bool OutsideInput::isStopAsked() {
    return platform::stopSignal() != 0 && !Outside::getInstance().isReplaying();
}

void OutsideInput::beginStep() {
    source->beginStep();
}

InputSource::State OutsideInput::getState() {
    State now = State::ABSENT;
    if (isStopAsked())
        now = State::OPEN;
    else if (!Outside::getInstance().isReplaying())
        now = source->getState();
    return askValue(now, State::ABSENT, State::OPEN);
}

std::optional<InputItem> OutsideInput::next() {
    std::optional<InputItem> item;
    if (isStopAsked())
        item = InputItem{.kind = InputItem::Kind::WINDOW_CLOSED};
    else if (!Outside::getInstance().isReplaying())
        item = source->next();
    if (ask([&] { return item ? 1 : 0; }) != 1)
        return std::nullopt;
    InputItem asked = item.value_or(InputItem{});
    using Kind = InputItem::Kind;
    asked.kind = askValue(asked.kind, Kind::WINDOW_CLOSED, Kind::TEXT_TYPED);
    asked.sfml_key = askValue(asked.sfml_key, -1, most_sfml_key);
    asked.button = askValue(asked.button, UNDEFINED_MOUSE_BUTTON, MIDDLE);
    asked.mouse = askVector(asked.mouse);
    if (asked.kind == Kind::TEXT_TYPED) // Older records have no such items.
        asked.character = askValue(asked.character, U'\0', last_code_point);
    return asked;
}

bool OutsideInput::hasFocus() {
    return ask([this] { return source->hasFocus(); });
}

bool OutsideInput::isKeyDown(int sfml_key) {
    return ask([=, this] { return source->isKeyDown(sfml_key); });
}

bool OutsideInput::isButtonDown(EventMouseButton button) {
    return ask([=, this] { return source->isButtonDown(button); });
}

Vector OutsideInput::mousePosition() {
    return askVector(Outside::getInstance().isReplaying() ? Vector() : source->mousePosition());
}

} // namespace sv
