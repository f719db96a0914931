// Objects as text: which attributes there are, how each is written and how it is read.

#include "selvane/core/LogManager.h"
#include "selvane/core/attributes.h"
#include "selvane/core/text.h"
#include "selvane/world/Object.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>

namespace sv {

namespace {

constexpr char log_prefix[] = "Object::deserialize():";

/// Those of one attribute, in the order of writing.
using Keys = std::array<const char *, 4>;

template<auto GET>
std::string writeBool(const Object &object, const Keys &keys) {
    return attribute(keys[0], boolToString((object.*GET)()));
}

template<auto SET>
void readBool(Object &object, const AttributeReader &reader, const Keys &keys) {
    if (const auto flag = reader.readBool(keys[0]))
        (object.*SET)(*flag);
}

template<auto GET>
std::string writeInt(const Object &object, const Keys &keys) {
    return attribute(keys[0], toString(int{(object.*GET)()}));
}

template<auto SET, typename Number = int>
void readInt(Object &object, const AttributeReader &reader, const Keys &keys) {
    if (const auto number = reader.readInt(keys[0]))
        (object.*SET)(static_cast<Number>(*number));
}

/// Whether a number keeps positions and speeds finite. Far beyond any world, but nothing recovers
/// from infinity.
bool isUsable(float number) {
    constexpr float most = 1e9F;
    return std::abs(number) <= most; // NaN is not.
}

/// The number, or nothing, with a line in the log, if it is not usable.
std::optional<float> usable(const char *key, std::optional<float> number) {
    if (!number || isUsable(*number))
        return number;
    logLine("%s %s is out of range (%g), so ignoring.", log_prefix, key, double{*number});
    return std::nullopt;
}

std::string writeSpeed(const Object &object, const Keys &keys) {
    return attribute(keys[0], toString(object.getSpeed()));
}

void readSpeed(Object &object, const AttributeReader &reader, const Keys &keys) {
    if (const auto speed = usable(keys[0], reader.readFloat(keys[0])))
        object.setSpeed(*speed);
}

template<auto GET>
std::string writeVector(const Object &object, const Keys &keys) {
    const Vector v = (object.*GET)();
    return attribute(keys[0], toString(v.x)) + attribute(keys[1], toString(v.y));
}

/// One component alone keeps the other.
template<auto GET, auto SET>
void readVector(Object &object, const AttributeReader &reader, const Keys &keys) {
    const auto x = usable(keys[0], reader.readFloat(keys[0]));
    const auto y = usable(keys[1], reader.readFloat(keys[1]));
    const Vector old = (object.*GET)();
    if (x || y)
        (object.*SET)({x.value_or(old.x), y.value_or(old.y)});
}

/// Unlike other vectors, only both components or none.
void readPosition(Object &object, const AttributeReader &reader, const Keys &keys) {
    const auto any_x = reader.readFloat(keys[0]);
    const auto any_y = reader.readFloat(keys[1]);
    const auto x = usable(keys[0], any_x);
    const auto y = usable(keys[1], any_y);
    if (x && y)
        object.setPosition({*x, *y});
    else if (any_x.has_value() != any_y.has_value())
        logLine("%s position not complete, so ignoring.", log_prefix);
}

std::string eventKey(int i) {
    return "event_name[" + toString(i) + "]";
}

std::string writeEvents(const Object &object, const Keys &keys) {
    const auto &interests = object.getInterests();
    std::string text = attribute(keys[0], toString(static_cast<int>(interests.size())));
    int i = 0;
    for (const std::string &event_type : interests)
        text += attribute(eventKey(i++), event_type);
    return text;
}

void readEvents(Object &object, const AttributeReader &reader, const Keys &keys) {
    const auto count = reader.readInt(keys[0]);
    if (!count)
        return;
    const std::vector<std::string> old_interests = object.getInterests();
    for (auto event_type = old_interests.rbegin(); event_type != old_interests.rend(); ++event_type)
        object.unregisterInterest(*event_type);
    // The count is the sender's word: no object can have had more than this.
    for (int i = 0; i < std::min(*count, MAX_OBJ_EVENTS); ++i) {
        const std::string event_type = reader.readText(eventKey(i), "'");
        if (!event_type.empty())
            object.registerInterest(event_type);
    }
}

std::string writeBox(const Object &object, const Keys &keys) {
    const Box box = object.getBox();
    return attribute(keys[0], toString(box.corner.x)) + attribute(keys[1], toString(box.corner.y)) +
           attribute(keys[2], toString(box.horizontal)) +
           attribute(keys[3], toString(box.vertical));
}

/// Read as whole numbers, although written with their fractions: both ends of a connection have
/// always agreed on the box of cells that this leaves.
void readBox(Object &object, const AttributeReader &reader, const Keys &keys) {
    std::array<float, 4> numbers{};
    int found = 0;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto number = reader.readInt(keys[i]);
        numbers[i] = static_cast<float>(number.value_or(0));
        found += number ? 1 : 0;
    }
    if (found == 4)
        object.setBox({{numbers[0], numbers[1]}, numbers[2], numbers[3]});
    else if (found > 0)
        logLine("%s box not complete, so ignoring.", log_prefix);
}

std::string writeType(const Object &object, const Keys &keys) {
    return attribute(keys[0], object.getType());
}

void readType(Object &object, const AttributeReader &reader, const Keys &keys) {
    if (const std::string type = reader.readText(keys[0]); !type.empty())
        object.setType(type);
}

/// Behind the others, and only where an object has such a colour.
constexpr char rgb_key[] = "rgb";

std::string writeShape(const Object &object, const Keys &keys) {
    const Shape shape = object.getShape();
    return attribute(keys[0], toString(int{shape.getType()})) +
           attribute(keys[1], toString(shape.getSize())) +
           attribute(keys[2], toString(int{shape.getColor()})) +
           attribute(keys[3], toString(int{shape.getAlpha()})) +
           (shape.getRgb() ? attribute(rgb_key, toString(*shape.getRgb())) : "");
}

void readShape(Object &object, const AttributeReader &reader, const Keys &keys) {
    std::array<std::string, 4> values;
    std::transform(keys.begin(), keys.end(), values.begin(),
                   [&](const char *key) { return reader.readWord(key, "'"); });
    const auto &[type, size, color, opacity] = values;
    if (type.empty() && size.empty() && color.empty() && opacity.empty())
        return;
    Shape shape = object.getShape();
    if (!type.empty())
        shape.setType(parseInt(type));
    if (!size.empty())
        shape.setSize(usable(keys[1], parseFloat(size)).value_or(shape.getSize()));
    if (!color.empty())
        shape.setColor(static_cast<Color>(parseInt(color)));
    if (const auto rgb = rgbFromText(reader.textOf(rgb_key)))
        shape.setColor(*rgb);
    if (!opacity.empty())
        shape.setAlpha(static_cast<unsigned char>(std::clamp(parseInt(opacity), 0, 255)));
    object.setShape(shape);
}

void readFollowPath(Object &object, const AttributeReader &reader, const Keys &keys) {
    const auto follow_path = reader.readBool(keys[0]);
    if (!follow_path)
        return;
    const Vector direction = object.getDirection();
    object.setFollowPath(*follow_path);
    // That turned it towards the path that it has so far. A direction that came with the flag, and
    // has been read before it, is where the sender's object was going.
    if (reader.has("x_direction") || reader.has("y_direction"))
        object.setDirection(direction);
}

std::string writePath(const Object &object, const Keys &keys) {
    std::string waypoints;
    for (const Vector waypoint : object.getPath().waypoints) {
        if (!waypoints.empty())
            waypoints += "|";
        waypoints += toString(waypoint.x) + " " + toString(waypoint.y);
    }
    return attribute(keys[0], waypoints) +
           attribute(keys[1], toString(object.getPath().path_index));
}

/// Two numbers with blanks between them.
std::optional<Vector> parseWaypoint(std::string_view piece) {
    const std::string_view numbers = withoutBlanksAround(piece);
    const std::size_t blank = numbers.find_first_of(BLANKS);
    if (blank == std::string_view::npos)
        return std::nullopt;
    const Vector waypoint{parseFloat(numbers), parseFloat(numbers.substr(blank))};
    return isUsable(waypoint.x) && isUsable(waypoint.y) ? std::optional(waypoint) : std::nullopt;
}

void readPath(Object &object, const AttributeReader &reader, const Keys &keys) {
    constexpr int most_named = 100; // A message has room for 65,000 malformed nodes.
    const std::string value = reader.textOf(keys[0]);
    const std::string_view waypoints = withoutBlanksAround(value);
    if (waypoints.empty())
        return;
    Path path;
    int malformed = 0;
    for (std::size_t begin = 0; begin < waypoints.size();) {
        const std::string_view piece = waypoints.substr(begin, waypoints.find('|', begin) - begin);
        begin += piece.size() + 1;
        if (const auto waypoint = parseWaypoint(piece)) {
            path.waypoints.push_back(*waypoint);
        } else if (++malformed <= most_named) {
            logLine("%s malformed node %s.", log_prefix, printable(piece).c_str());
            logLine("\tNot added.");
        }
    }
    if (malformed > most_named)
        logLine("%s malformed nodes besides these: %d. Not added.", log_prefix,
                malformed - most_named);
    object.setPath(path);
}

/// How an attribute is written and read.
struct Form {
    std::string (*write)(const Object &, const Keys &);
    void (*read)(Object &, const AttributeReader &, const Keys &);
};

template<auto GET, auto SET>
constexpr Form asFlag{writeBool<GET>, readBool<SET>};
template<auto GET, auto SET, typename Number = int>
constexpr Form asInteger{writeInt<GET>, readInt<SET, Number>};
template<auto GET, auto SET>
constexpr Form asVector{writeVector<GET>, readVector<GET, SET>};

struct AttributeText {
    Attribute attribute;
    const char *name;
    Keys keys;
    Form form;
};

using enum Attribute;

// In the order of writing and reading. The animation has its own text.
constexpr std::array<AttributeText, ATTRIBUTE_COUNT> attribute_texts{{
    {ID, "ID,", {"id"}, asInteger<&Object::getId, &Object::setId>},
    {ACTIVE, "ACTIVE,", {"is_active"}, asFlag<&Object::isActive, &Object::setActive>},
    {VISIBLE, "VISIBLE,", {"is_visible"}, asFlag<&Object::isVisible, &Object::setVisible>},
    {EVENTS, "EVENTS,", {"event_count"}, {writeEvents, readEvents}},
    {BOX,
     "BOX,",
     {"box-corner-x", "box-corner-y", "box-horizontal", "box-vertical"},
     {writeBox, readBox}},
    {POSITION, "POSITION,", {"pos-x", "pos-y"}, {writeVector<&Object::getPosition>, readPosition}},
    {TYPE, "TYPE,", {"type"}, {writeType, readType}},
    {ANIMATION, "ANIMATION,", {}, {}},
    {ALTITUDE, "ALTITUDE,", {"altitude"}, asInteger<&Object::getAltitude, &Object::setAltitude>},
    {SOLIDNESS,
     "SOLIDNESS,",
     {"solidness"},
     asInteger<&Object::getSolidness, &Object::setSolidness, Solidness>},
    {NO_SOFT, "NO_SOFT,", {"no_soft"}, asFlag<&Object::getNoSoft, &Object::setNoSoft>},
    {DIRECTION,
     "DIRECTION,",
     {"x_direction", "y_direction"},
     asVector<&Object::getDirection, &Object::setDirection>},
    {SPEED, "SPEED,", {"speed"}, {writeSpeed, readSpeed}},
    {ACCELERATION,
     "ACCELERATION,",
     {"x_acceleration", "y_acceleration"},
     asVector<&Object::getAcceleration, &Object::setAcceleration>},
    {SHAPE, "SHAPE,", {"shape", "size", "color", "opacity"}, {writeShape, readShape}},
    {FOLLOW_PATH,
     "FOLLOW_PATH,",
     {"follow_path"},
     {writeBool<&Object::getFollowPath>, readFollowPath}},
    {PATH, "PATH,", {"path", "path_index"}, {writePath, readPath}},
    {AVOID_COLLISIONS,
     "AVOID_COLLISIONS,",
     {"avoid_collisions"},
     asFlag<&Object::getAvoidCollisions, &Object::setAvoidCollisions>},
}};

} // namespace

std::string Object::serialize(const std::string &attributes) {
    logLine(20, "Object::serialize(): attr is '%s'", attributes.c_str());
    if (!attributes.empty() && attributes != ALL_ATTRIBUTES && attributes.back() != ',')
        logLine("Object::serialize(): Warning! Attribute '%s' missing trailing ','",
                attributes.c_str());

    std::string text;
    for (const AttributeText &row : attribute_texts) {
        const auto flag = static_cast<std::size_t>(row.attribute);
        const bool is_wanted = isAttributeWanted(attributes, row.name, modified.test(flag));
        if (is_wanted)
            modified.reset(flag);
        // The animation's own flag decides: it moves on without the object hearing of it.
        if (row.attribute == Attribute::ANIMATION)
            text += animation.serialize(attributes);
        else if (is_wanted)
            text += row.form.write(*this, row.keys);
    }
    return text;
}

int Object::deserialize(const std::string &text) {
    const AttributeReader reader(text, log_prefix, 20);
    for (const AttributeText &row : attribute_texts) {
        if (row.attribute == Attribute::ANIMATION)
            animation.deserialize(text);
        else
            row.form.read(*this, reader, row.keys);
    }
    return 0;
}

} // namespace sv
