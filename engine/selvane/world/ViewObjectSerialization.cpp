// What a view object writes besides what every object does, and how it is read.

#include "selvane/core/LogManager.h"
#include "selvane/core/attributes.h"
#include "selvane/core/text.h"
#include "selvane/world/ViewObject.h"

namespace sv {

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
         [](ViewObject &o, const AttributeReader &reader, const char *key) {
             if (const auto value = reader.readInt(key, "value"))
                 o.setValue(*value);
         }},
        {BORDER, "BORDER,", "view_border",
         [](const ViewObject &o) { return boolToString(o.border); },
         [](ViewObject &o, const AttributeReader &reader, const char *key) {
             if (const auto border = reader.readBool(key, "border"))
                 o.setBorder(*border);
         }},
        {COLOR, "COLOR,", "view_color", [](const ViewObject &o) { return toString(int{o.color}); },
         [](ViewObject &o, const AttributeReader &reader, const char *key) {
             if (const auto color = reader.readInt(key, "color"))
                 o.setColor(static_cast<Color>(*color));
         }},
        {LOCATION, "LOCATION,", "view_location",
         [](const ViewObject &o) { return toString(o.location); },
         [](ViewObject &o, const AttributeReader &reader, const char *key) {
             if (const auto location = reader.readInt(key, "location"))
                 o.setLocation(*location);
         }},
        {DRAW_VALUE, "DRAW_VALUE,", "view_draw_value",
         [](const ViewObject &o) { return boolToString(o.draw_value); },
         [](ViewObject &o, const AttributeReader &reader, const char *key) {
             if (const auto draw_value = reader.readBool(key, "draw_value"))
                 o.setDrawValue(*draw_value);
         }},
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
    }
    return text;
}

int ViewObject::deserialize(const std::string &text) {
    Object::deserialize(text);
    const AttributeReader reader(text, "ViewObject::deserialize():", 10);
    for (const AttributeText &row : attributeTexts())
        row.read(*this, reader, row.key);
    return 0;
}

} // namespace sv
