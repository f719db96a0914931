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

std::optional<int> readInt(const std::string &text, const std::string &key) {
    const std::string value = match(text, key);
    if (value.empty())
        return std::nullopt;
    const int number = parseInt(value);
    logLine(20, "%s %s is %d", log_prefix, key.c_str(), number);
    return number;
}

/// Whether a position or speed can live with a number: far beyond any world, but so that what moves
/// with it stays finite. Nothing recovers from infinity.
bool isUsable(float number) {
    constexpr float most = 1e9F;
    return std::abs(number) <= most; // NaN is not.
}

/// The number, or nothing, with a line in the log, if it is not usable.
std::optional<float> usable(const std::string &key, std::optional<float> number) {
    if (!number || isUsable(*number))
        return number;
    logLine("%s %s is out of range (%g), so ignoring.", log_prefix, key.c_str(), double{*number});
    return std::nullopt;
}

/// Usable or not.
std::optional<float> readAnyFloat(const std::string &text, const std::string &key) {
    const std::string value = match(text, key);
    if (value.empty())
        return std::nullopt;
    const float number = parseFloat(value);
    logLine(20, "%s %s is %.2f", log_prefix, key.c_str(), double{number});
    return number;
}

std::optional<float> readFloat(const std::string &text, const std::string &key) {
    return usable(key, readAnyFloat(text, key));
}

std::optional<bool> readBool(const std::string &text, const std::string &key) {
    const std::string value = match(text, key);
    if (value.empty())
        return std::nullopt;
    logLine(20, "%s %s is %s", log_prefix, key.c_str(), printable(value).c_str());
    return value == "true";
}

/// A value of the figure, which the log shows as it was sent.
std::string readQuoted(const std::string &text, const std::string &key) {
    std::string value = match(text, key);
    if (!value.empty())
        logLine(20, "%s %s is '%s'", log_prefix, key.c_str(), printable(value).c_str());
    return value;
}

std::string eventKey(int i) {
    return "event_name[" + toString(i) + "]";
}

std::string writeEvents(const Object &object) {
    const auto &interests = object.getInterests();
    std::string text = attribute("event_count", toString(static_cast<int>(interests.size())));
    int i = 0;
    for (const std::string &event_type : interests)
        text += attribute(eventKey(i++), event_type);
    return text;
}

void readEvents(Object &object, const std::string &text) {
    const auto count = readInt(text, "event_count");
    if (!count)
        return;
    const std::vector<std::string> old_interests = object.getInterests();
    for (auto event_type = old_interests.rbegin(); event_type != old_interests.rend(); ++event_type)
        object.unregisterInterest(*event_type);
    // The count is the sender's word: no object can have had more than this.
    for (int i = 0; i < std::min(*count, MAX_OBJ_EVENTS); ++i) {
        const std::string event_type = attributeText(text, eventKey(i));
        if (event_type.empty())
            continue;
        logLine(20, "%s event_name[%d] is '%s'", log_prefix, i, printable(event_type).c_str());
        object.registerInterest(event_type);
    }
}

std::string writeBox(const Object &object) {
    const Box box = object.getBox();
    return attribute("box-corner-x", toString(box.corner.x)) +
           attribute("box-corner-y", toString(box.corner.y)) +
           attribute("box-horizontal", toString(box.horizontal)) +
           attribute("box-vertical", toString(box.vertical));
}

/// Read as whole numbers, although written with their fractions: both ends of a connection have
/// always agreed on the box of cells that this leaves.
void readBox(Object &object, const std::string &text) {
    const auto x = readInt(text, "box-corner-x");
    const auto y = readInt(text, "box-corner-y");
    const auto horizontal = readInt(text, "box-horizontal");
    const auto vertical = readInt(text, "box-vertical");
    if (x && y && horizontal && vertical)
        object.setBox({{static_cast<float>(*x), static_cast<float>(*y)},
                       static_cast<float>(*horizontal),
                       static_cast<float>(*vertical)});
    else if (x || y || horizontal || vertical)
        logLine("%s box not complete, so ignoring.", log_prefix);
}

std::string writeVector(Vector v, const char *x_key, const char *y_key) {
    return attribute(x_key, toString(v.x)) + attribute(y_key, toString(v.y));
}

void readPosition(Object &object, const std::string &text) {
    const auto any_x = readAnyFloat(text, "pos-x");
    const auto any_y = readAnyFloat(text, "pos-y");
    const auto x = usable("pos-x", any_x);
    const auto y = usable("pos-y", any_y);
    if (x && y)
        object.setPosition({*x, *y});
    else if (any_x.has_value() != any_y.has_value())
        logLine("%s position not complete, so ignoring.", log_prefix);
}

void readType(Object &object, const std::string &text) {
    const std::string type = attributeText(text, "type");
    if (type.empty())
        return;
    logLine(20, "%s type is %s", log_prefix, printable(type).c_str());
    object.setType(type);
}

/// `old` with the components that the text has; nothing if it has neither.
std::optional<Vector> readVector(const std::string &text, const char *x_key, const char *y_key,
                                 Vector old) {
    const auto x = readFloat(text, x_key);
    const auto y = readFloat(text, y_key);
    return x || y ? std::optional(Vector{x.value_or(old.x), y.value_or(old.y)}) : std::nullopt;
}

void readDirection(Object &object, const std::string &text) {
    if (const auto v = readVector(text, "x_direction", "y_direction", object.getDirection()))
        object.setDirection(*v);
}

void readAcceleration(Object &object, const std::string &text) {
    if (const auto v =
            readVector(text, "x_acceleration", "y_acceleration", object.getAcceleration()))
        object.setAcceleration(*v);
}

void readFollowPath(Object &object, const std::string &text) {
    const auto follow_path = readBool(text, "follow_path");
    if (!follow_path)
        return;
    const Vector direction = object.getDirection();
    object.setFollowPath(*follow_path);
    // That turned it towards the path that it has so far. A direction that came with the flag, and
    // has been read before it, is where the sender's object was going.
    if (!match(text, "x_direction").empty() || !match(text, "y_direction").empty())
        object.setDirection(direction);
}

std::string writeShape(const Object &object) {
    const Shape shape = object.getShape();
    return attribute("shape", toString(int{shape.getType()})) +
           attribute("size", toString(shape.getSize())) +
           attribute("color", toString(int{shape.getColor()})) +
           attribute("opacity", toString(int{shape.getAlpha()}));
}

void readShape(Object &object, const std::string &text) {
    const std::string type = readQuoted(text, "shape");
    const std::string size = readQuoted(text, "size");
    const std::string color = readQuoted(text, "color");
    const std::string opacity = readQuoted(text, "opacity");
    if (type.empty() && size.empty() && color.empty() && opacity.empty())
        return;
    Shape shape = object.getShape();
    if (!type.empty())
        shape.setType(parseInt(type));
    if (!size.empty())
        shape.setSize(usable("size", parseFloat(size)).value_or(shape.getSize()));
    if (!color.empty())
        shape.setColor(static_cast<Color>(parseInt(color)));
    if (!opacity.empty())
        shape.setAlpha(static_cast<unsigned char>(std::clamp(parseInt(opacity), 0, 255)));
    object.setShape(shape);
}

std::string writePath(const Object &object) {
    std::string waypoints;
    for (const Vector waypoint : object.getPath().waypoints) {
        if (!waypoints.empty())
            waypoints += "|";
        waypoints += toString(waypoint.x) + " " + toString(waypoint.y);
    }
    return attribute("path", waypoints) +
           attribute("path_index", toString(object.getPath().path_index));
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

void readPath(Object &object, const std::string &text) {
    constexpr int most_named = 100; // A message has room for 65,000 malformed nodes.
    const std::string value = attributeText(text, "path");
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

struct AttributeText {
    Attribute attribute;
    const char *name;
    std::string (*write)(const Object &);
    void (*read)(Object &, const std::string &);
};

// In the order of writing and reading. The animation has its own text.
constexpr std::array<AttributeText, ATTRIBUTE_COUNT> attribute_texts{{
    {Attribute::ID, "ID,", [](const Object &o) { return attribute("id", toString(o.getId())); },
     [](Object &o, const std::string &text) {
         if (const auto id = readInt(text, "id"))
             o.setId(*id);
     }},
    {Attribute::ACTIVE, "ACTIVE,",
     [](const Object &o) { return attribute("is_active", boolToString(o.isActive())); },
     [](Object &o, const std::string &text) {
         if (const auto active = readBool(text, "is_active"))
             o.setActive(*active);
     }},
    {Attribute::VISIBLE, "VISIBLE,",
     [](const Object &o) { return attribute("is_visible", boolToString(o.isVisible())); },
     [](Object &o, const std::string &text) {
         if (const auto visible = readBool(text, "is_visible"))
             o.setVisible(*visible);
     }},
    {Attribute::EVENTS, "EVENTS,", writeEvents, readEvents},
    {Attribute::BOX, "BOX,", writeBox, readBox},
    {Attribute::POSITION, "POSITION,",
     [](const Object &o) { return writeVector(o.getPosition(), "pos-x", "pos-y"); }, readPosition},
    {Attribute::TYPE, "TYPE,", [](const Object &o) { return attribute("type", o.getType()); },
     readType},
    {Attribute::ANIMATION, "ANIMATION,", nullptr, nullptr},
    {Attribute::ALTITUDE, "ALTITUDE,",
     [](const Object &o) { return attribute("altitude", toString(o.getAltitude())); },
     [](Object &o, const std::string &text) {
         if (const auto altitude = readInt(text, "altitude"))
             o.setAltitude(*altitude);
     }},
    {Attribute::SOLIDNESS, "SOLIDNESS,",
     [](const Object &o) { return attribute("solidness", toString(int{o.getSolidness()})); },
     [](Object &o, const std::string &text) {
         if (const auto solidness = readInt(text, "solidness"))
             o.setSolidness(static_cast<Solidness>(*solidness));
     }},
    {Attribute::NO_SOFT, "NO_SOFT,",
     [](const Object &o) { return attribute("no_soft", boolToString(o.getNoSoft())); },
     [](Object &o, const std::string &text) {
         if (const auto no_soft = readBool(text, "no_soft"))
             o.setNoSoft(*no_soft);
     }},
    {Attribute::DIRECTION, "DIRECTION,",
     [](const Object &o) { return writeVector(o.getDirection(), "x_direction", "y_direction"); },
     readDirection},
    {Attribute::SPEED, "SPEED,",
     [](const Object &o) { return attribute("speed", toString(o.getSpeed())); },
     [](Object &o, const std::string &text) {
         if (const auto speed = readFloat(text, "speed"))
             o.setSpeed(*speed);
     }},
    {Attribute::ACCELERATION, "ACCELERATION,",
     [](const Object &o) {
         return writeVector(o.getAcceleration(), "x_acceleration", "y_acceleration");
     },
     readAcceleration},
    {Attribute::SHAPE, "SHAPE,", writeShape, readShape},
    {Attribute::FOLLOW_PATH, "FOLLOW_PATH,",
     [](const Object &o) { return attribute("follow_path", boolToString(o.getFollowPath())); },
     readFollowPath},
    {Attribute::PATH, "PATH,", writePath, readPath},
    {Attribute::AVOID_COLLISIONS, "AVOID_COLLISIONS,",
     [](const Object &o) {
         return attribute("avoid_collisions", boolToString(o.getAvoidCollisions()));
     },
     [](Object &o, const std::string &text) {
         if (const auto avoid_collisions = readBool(text, "avoid_collisions"))
             o.setAvoidCollisions(*avoid_collisions);
     }},
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
            text += row.write(*this);
    }
    return text;
}

int Object::deserialize(const std::string &text) {
    if (text.empty())
        return 0; // match() would search whatever it was given last.
    for (const AttributeText &row : attribute_texts) {
        if (row.attribute == Attribute::ANIMATION)
            animation.deserialize(text);
        else
            row.read(*this, text);
    }
    return 0;
}

} // namespace sv
