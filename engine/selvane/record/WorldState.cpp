#include "selvane/record/WorldState.h"

#include "selvane/core/text.h"
#include "selvane/outside/packing.h"
#include "selvane/world/ViewObject.h"
#include "selvane/world/WorldManager.h"

#include <algorithm>
#include <bit>
#include <cstdio>

namespace sv {

namespace {

using Number = StateNumber;
using Text = StateText;

constexpr int id_of_world = 0;

constexpr std::array<const char *, STATE_NUMBER_COUNT> number_names = {
    "x",
    "y",
    "x_direction",
    "y_direction",
    "speed",
    "x_acceleration",
    "y_acceleration",
    "box-corner-x",
    "box-corner-y",
    "box-horizontal",
    "box-vertical",
    "size of its figure",
    "is_active",
    "is_visible",
    "altitude",
    "solidness",
    "no_soft",
    "avoid_collisions",
    "frame of its sprite",
    "slowdown count",
    "figure",
    "color of its figure",
    "opacity",
    "follow_path",
    "number of waypoints",
    "life span",
    "number of interests",
    "value",
    "border",
    "color",
    "location",
    "draw_value",
    "color of its figure",
    "color",
    "background",
};
constexpr std::array<const char *, STATE_TEXT_COUNT> text_names = {"type", "sprite", "view string"};

bool hasFraction(std::size_t number) {
    return number < static_cast<std::size_t>(Number::ACTIVE);
}

void set(ObjectState &state, Number which, float value) {
    state.numbers[static_cast<std::size_t>(which)] = std::bit_cast<std::int32_t>(value);
}

void set(ObjectState &state, Number which, int value) {
    state.numbers[static_cast<std::size_t>(which)] = value;
}

void set(ObjectState &state, Number x, Number y, Vector v) {
    set(state, x, v.x);
    set(state, y, v.y);
}

void set(ObjectState &state, const Box &box) {
    set(state, Number::BOX_X, Number::BOX_Y, box.corner);
    set(state, Number::BOX_HORIZONTAL, Number::BOX_VERTICAL, {box.horizontal, box.vertical});
}

void set(ObjectState &state, Text which, const std::string &text) {
    state.texts[static_cast<std::size_t>(which)] = text;
}

void set(ObjectState &state, Number which, const std::optional<Rgb> &color) {
    if (color)
        set(state, which, 1 + (color->r << 16 | color->g << 8 | color->b));
}

void addFigure(ObjectState &state, const Shape &shape) {
    set(state, Number::SHAPE_SIZE, shape.getSize());
    set(state, Number::SHAPE, int{shape.getType()});
    set(state, Number::SHAPE_COLOR, int{shape.getColor()});
    set(state, Number::OPACITY, int{shape.getAlpha()});
    set(state, Number::SHAPE_RGB, shape.getRgb());
}

void addView(ObjectState &state, const ViewObject &view) {
    set(state, Number::VALUE, view.getValue());
    set(state, Number::BORDER, int{view.getBorder()});
    set(state, Number::COLOR, int{view.getColor()});
    set(state, Number::LOCATION, view.getLocation());
    set(state, Number::DRAW_VALUE, int{view.getDrawValue()});
    if (view.getColor() == CUSTOM && view.getRgb() != Rgb())
        set(state, Number::RGB, view.getRgb());
    set(state, Number::BACKGROUND, view.getBackground());
    set(state, Text::VIEW_STRING, view.getViewString());
}

float fraction(const ObjectState &state, Number which) {
    return std::bit_cast<float>(state.get(which));
}

Vector vector(const ObjectState &state, Number x, Number y) {
    return {fraction(state, x), fraction(state, y)};
}

/// To where it is a step later if nothing else happens, computed as the world does.
void advance(ObjectState &state) {
    const Vector direction = vector(state, Number::X_DIRECTION, Number::Y_DIRECTION);
    set(state, Number::X, Number::Y,
        state.getPosition() + direction * fraction(state, Number::SPEED));
}

/// Without a sign, since in a damaged file the sum may be anything.
std::int32_t sum(std::int32_t a, std::int64_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

constexpr std::size_t first_text_bit = 32;

/// Of a number in a mask. Those that came later have theirs behind the texts', so that older
/// records can be played.
std::size_t numberBit(std::size_t number) {
    return number < first_text_bit ? number : number + STATE_TEXT_COUNT;
}

/// Which numbers and texts differ, and by how much.
std::string packDifference(const ObjectState &from, const ObjectState &to) {
    std::string values;
    std::uint64_t mask = 0;
    for (std::size_t i = 0; i < STATE_NUMBER_COUNT; ++i) {
        if (from.numbers[i] == to.numbers[i])
            continue;
        mask |= std::uint64_t{1} << numberBit(i);
        packSigned(values, std::int64_t{to.numbers[i]} - from.numbers[i]);
    }
    for (std::size_t i = 0; i < STATE_TEXT_COUNT; ++i) {
        if (from.texts[i] == to.texts[i])
            continue;
        mask |= std::uint64_t{1} << (first_text_bit + i);
        packText(values, to.texts[i]);
    }
    std::string bytes;
    packNumber(bytes, mask);
    return bytes + values;
}

bool unpackDifference(std::string_view &bytes, ObjectState &state) {
    const auto mask = unpackNumber(bytes);
    const auto differs = [&](std::size_t bit) { return (*mask >> bit & 1) != 0; };
    if (!mask)
        return false;
    for (std::size_t i = 0; i < STATE_NUMBER_COUNT; ++i) {
        const auto difference = differs(numberBit(i)) ? unpackSigned(bytes) : 0;
        if (!difference)
            return false;
        state.numbers[i] = sum(state.numbers[i], *difference);
    }
    for (std::size_t i = 0; i < STATE_TEXT_COUNT; ++i) {
        if (!differs(first_text_bit + i))
            continue;
        const auto text = unpackText(bytes);
        if (!text)
            return false;
        state.texts[i] = *text;
    }
    return true;
}

/// A list of ids, each as its difference from the one before, with what belongs to it behind.
template<typename Visit>
bool forEachId(std::string_view &bytes, Visit visit) {
    const auto count = unpackNumber(bytes);
    int id = 0;
    for (auto left = count.value_or(0); left > 0; --left) {
        const auto step = unpackSigned(bytes);
        id = sum(id, step.value_or(0));
        if (!step || !visit(id))
            return false;
    }
    return count.has_value();
}

std::string nameOf(int id, const ObjectState &state) {
    if (id == id_of_world)
        return "the view or the boundary";
    return "object " + std::to_string(id) + " (" + printable(state.get(Text::TYPE)) + ")";
}

std::string shown(std::size_t number, std::int32_t value) {
    if (!hasFraction(number))
        return std::to_string(value);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.9g", double{std::bit_cast<float>(value)});
    return text.data();
}

/// REQUIRES: they differ.
std::string firstDifference(const ObjectState &now, const ObjectState &recorded) {
    for (std::size_t i = 0; i < STATE_NUMBER_COUNT; ++i)
        if (now.numbers[i] != recorded.numbers[i])
            return std::string(number_names[i]) + " is " + shown(i, now.numbers[i]) +
                   ", recorded " + shown(i, recorded.numbers[i]);
    std::size_t i = 0;
    while (now.texts[i] == recorded.texts[i])
        ++i;
    return std::string(text_names[i]) + " is '" + printable(now.texts[i]) + "', recorded '" +
           printable(recorded.texts[i]) + "'";
}

} // namespace

Vector ObjectState::getPosition() const {
    return vector(*this, Number::X, Number::Y);
}

ObjectState WorldState::stateOf(const Object &object) {
    ObjectState state;
    set(state, Number::X, Number::Y, object.position);
    set(state, Number::X_DIRECTION, Number::Y_DIRECTION, object.direction);
    set(state, Number::SPEED, object.speed);
    set(state, Number::X_ACCELERATION, Number::Y_ACCELERATION, object.acceleration);
    set(state, object.box);
    set(state, Number::ACTIVE, int{object.is_active});
    set(state, Number::VISIBLE, int{object.is_visible});
    set(state, Number::ALTITUDE, object.altitude);
    set(state, Number::SOLIDNESS, int{object.solidness});
    set(state, Number::NO_SOFT, int{object.no_soft});
    set(state, Number::AVOID_COLLISIONS, int{object.avoid_collisions});
    set(state, Number::FRAME, object.animation.getIndex());
    set(state, Number::SLOWDOWN_COUNT, object.animation.getSlowdownCount());
    set(state, Number::FOLLOW_PATH, int{object.follow_path});
    set(state, Number::WAYPOINTS, static_cast<int>(object.path.waypoints.size() - object.passed));
    set(state, Number::LIFE_SPAN, object.life_span);
    set(state, Number::INTERESTS, static_cast<int>(object.event_name.size()));
    set(state, Text::TYPE, object.type);
    set(state, Text::SPRITE, object.animation.getName());
    addFigure(state, object.shape);
    if (const auto *view = dynamic_cast<const ViewObject *>(&object))
        addView(state, *view);
    return state;
}

ObjectState WorldState::stateOfWorld() {
    const WorldManager &world = WorldManager::getInstance();
    ObjectState state;
    set(state, Number::X, Number::Y, world.getView().corner);
    set(state, world.getBoundary());
    return state;
}

std::string WorldState::update() {
    ++updates;
    changes.clear();
    change_count = 0;
    last_id = 0;
    next = objects.begin();
    updateObject(id_of_world, stateOfWorld());
    for (const Object *object : WorldManager::getInstance().getAllObjects(true))
        updateObject(object->getId(), stateOf(*object));
    std::string bytes;
    packNumber(bytes, change_count);
    bytes += changes;
    changes.clear();
    change_count = 0;
    removeUnseen();
    packNumber(bytes, change_count);
    return bytes + changes;
}

/// The objects of a world come nearly in the order of their ids.
ObjectState &WorldState::find(int id) {
    if (next == objects.end() || next->first != id)
        next = objects.try_emplace(id).first;
    return (next++)->second;
}

void WorldState::updateObject(int id, ObjectState now) {
    ObjectState &state = find(id);
    if (state.seen == updates)
        return; // Of two objects with one id, which the network may bring, the first counts.
    advance(state);
    now.seen = updates;
    if (!(now == state)) {
        packSigned(changes, std::int64_t{id} - last_id);
        changes += packDifference(state, now);
        last_id = id;
        ++change_count;
    }
    state = std::move(now);
}

void WorldState::removeUnseen() {
    last_id = 0;
    for (auto each = objects.begin(); each != objects.end();) {
        if (each->second.seen == updates) {
            ++each;
            continue;
        }
        packSigned(changes, std::int64_t{each->first} - last_id);
        last_id = each->first;
        ++change_count;
        each = objects.erase(each);
    }
}

bool WorldState::apply(std::string_view &bytes) {
    for (auto &[id, state] : objects)
        advance(state);
    const auto change = [this, &bytes](int id) { return unpackDifference(bytes, objects[id]); };
    const auto remove = [this](int id) {
        objects.erase(id);
        return true;
    };
    return forEachId(bytes, change) && forEachId(bytes, remove);
}

std::optional<std::string> WorldState::findDifference(const WorldState &recorded) const {
    for (const auto &[id, now] : objects) {
        const auto found = recorded.objects.find(id);
        if (found == recorded.objects.end())
            return nameOf(id, now) + " is there, but was not recorded";
        if (!(now == found->second))
            return nameOf(id, now) + ": " + firstDifference(now, found->second);
    }
    for (const auto &[id, then] : recorded.objects)
        if (!objects.contains(id))
            return nameOf(id, then) + " is missing";
    return std::nullopt;
}

} // namespace sv
