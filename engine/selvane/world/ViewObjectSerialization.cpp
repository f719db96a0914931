// What a view object writes besides what every object does, and how it is read.

#include "selvane/core/LogManager.h"
#include "selvane/core/attributes.h"
#include "selvane/core/text.h"
#include "selvane/world/ViewObject.h"

namespace sv {

namespace {

constexpr char rgb_key[] = "view_rgb";
constexpr char background_key[] = "view_background";

/// The log names a value without the "view_" of its key.
const char *loggedName(const char *key) {
    return key + sizeof("view_") - 1;
}

template<auto SET>
void readInt(ViewObject &object, const AttributeReader &reader, const char *key) {
    if (const auto number = reader.readInt(key, loggedName(key)))
        (object.*SET)(*number);
}

template<auto SET>
void readBool(ViewObject &object, const AttributeReader &reader, const char *key) {
    if (const auto flag = reader.readBool(key, loggedName(key)))
        (object.*SET)(*flag);
}

} // namespace

struct ViewObject::AttributeText {
    ViewAttribute attribute;
    const char *name;
    const char *key;
    std::string (*write)(const ViewObject &);
    void (*read)(ViewObject &, const AttributeReader &, const char *key);
};

/// In the order of writing and reading.
std::span<const ViewObject::AttributeText> ViewObject::attributeTexts() {
    using enum ViewAttribute;
    static constexpr AttributeText table[] = {
        {VIEW_STRING, "VIEW_STRING,", "view_string",
         [](const ViewObject &o) { return o.view_string; },
         [](ViewObject &o, const AttributeReader &reader, const char *key) {
             const std::string text = reader.readText(key);
             if (text.empty())
                 return;
             o.view_string = text;
             o.setModified(VIEW_STRING); // Also if it is the same.
         }},
        {VALUE, "VALUE,", "view_value", [](const ViewObject &o) { return toString(o.value); },
         readInt<&ViewObject::setValue>},
        {BORDER, "BORDER,", "view_border",
         [](const ViewObject &o) { return boolToString(o.border); },
         readBool<&ViewObject::setBorder>},
        {COLOR, "COLOR,", "view_color", [](const ViewObject &o) { return toString(int{o.color}); },
         [](ViewObject &o, const AttributeReader &reader, const char *key) {
             const auto number = reader.readInt(key, loggedName(key));
             if (!number)
                 return;
             o.setColor(static_cast<Color>(*number));
             o.deserializeRgb(reader);
         }},
        {LOCATION, "LOCATION,", "view_location",
         [](const ViewObject &o) { return toString(o.location); },
         readInt<&ViewObject::setLocation>},
        {DRAW_VALUE, "DRAW_VALUE,", "view_draw_value",
         [](const ViewObject &o) { return boolToString(o.draw_value); },
         readBool<&ViewObject::setDrawValue>},
    };
    return table;
}

std::string ViewObject::serialize(const std::string &attributes) {
    logLine(25, "ViewObject::serialize(): attr is '%s'", attributes.c_str());
    std::string text = Object::serialize(attributes);
    for (const AttributeText &row : attributeTexts()) {
        const auto flag = static_cast<std::size_t>(row.attribute);
        if (!isAttributeWanted(attributes, row.name, modified.test(flag)))
            continue;
        modified.reset(flag);
        text += attribute(row.key, row.write(*this));
        if (row.attribute == ViewAttribute::COLOR)
            text += serializeRgb();
    }
    return text;
}

/// What the number of a colour does not say. Nothing for a colour with a name.
std::string ViewObject::serializeRgb() const {
    std::string text;
    if (color == CUSTOM && rgb != Rgb())
        text += attribute(rgb_key, toString(rgb));
    if (background)
        text += attribute(background_key, toString(*background));
    return text;
}

/// A text with a colour's number has these as well, where there are any.
void ViewObject::deserializeRgb(const AttributeReader &reader) {
    const Rgb new_rgb = rgbFromText(reader.textOf(rgb_key)).value_or(Rgb());
    if (color == CUSTOM)
        setColor(new_rgb);
    setBackground(rgbFromText(reader.textOf(background_key)));
}

int ViewObject::deserialize(const std::string &text) {
    Object::deserialize(text);
    const AttributeReader reader(text, "ViewObject::deserialize():", 10);
    for (const AttributeText &row : attributeTexts())
        row.read(*this, reader, row.key);
    return 0;
}

} // namespace sv
