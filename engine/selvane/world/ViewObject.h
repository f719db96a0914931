/// A label and a number at a fixed place of the window: scores, timers, prompts. Its position is in
/// cells of the view, (0, 0) at the upper left; the world scrolls under it. "sv-view" events with
/// its label change its value. Made and deleted like any object. Game-loop thread only.
#pragma once

#include "selvane/core/Color.h"
#include "selvane/world/Object.h"

#include <bitset>
#include <optional>
#include <span>
#include <string>

namespace sv {

class AttributeReader;

/// Named places for view objects.
enum ViewObjectLocation : int {
    FREE_PLACEMENT = -1, ///< Set by setPosition(); setLocation() refuses it.
    TOP_LEFT = 0,
    TOP_CENTER = 1,
    TOP_RIGHT = 2,
    CENTER_LEFT = 3,
    CENTER_CENTER = 4,
    CENTER_RIGHT = 5,
    BOTTOM_LEFT = 6,
    BOTTOM_CENTER = 7,
    BOTTOM_RIGHT = 8,
};

/// What a view object can write besides Attribute.
enum class ViewAttribute { VIEW_STRING, VALUE, BORDER, COLOR, LOCATION, DRAW_VALUE };
inline constexpr int VIEW_ATTRIBUTE_COUNT = 6;

class ViewObject : public Object {
  public:
    /// At the top centre, spectral, at the highest altitude.
    ViewObject();

    /// Moves it to one of the nine locations, by the current view and border. Other numbers are
    /// refused with a line in the log.
    void setLocation(int new_location);
    int getLocation() const { return location; }

    /// In cells of the view; the location becomes FREE_PLACEMENT. 0, or -1 for a position that is
    /// not finite.
    int setPosition(Vector new_position) override;

    /// Whether a frame surrounds the text. Default: true. An object at a location moves to the row
    /// for that.
    void setBorder(bool new_border);
    bool getBorder() const { return border; }

    void setValue(int new_value);
    int getValue() const { return value; }

    /// The label, also the tag of the events that change the value. Default: empty.
    void setViewString(const std::string &new_view_string);
    std::string getViewString() const { return view_string; }

    /// Of text and border. Default: COLOR_DEFAULT.
    void setColor(Color new_color);
    Color getColor() const { return color; }

    /// Any colour; getColor() is `CUSTOM` then.
    void setColor(Rgb new_color);
    /// The colour in any case. White for a `CUSTOM` one that was not set.
    Rgb getRgb() const { return color == CUSTOM ? rgb : Rgb(color); }

    /// Behind text and border. Default: none, which is the window's.
    void setBackground(const std::optional<Rgb> &new_background);
    std::optional<Rgb> getBackground() const { return background; }

    /// Whether the value is shown. Default: true. A change does not count as a modification.
    void setDrawValue(bool new_draw_value) { draw_value = new_draw_value; }
    bool getDrawValue() const { return draw_value; }

    /// Whether it shows its sprite in place of text and border. Default: false. At a location the
    /// whole sprite is in the view, as far as it fits: set the sprite first.
    void setDrawSprite(bool new_draw_sprite);
    bool getDrawSprite() const { return draw_sprite; }

    int eventHandler(const Event *p_event) override;

    /// 0, or below 0 if the display refuses.
    int draw() override;

    /// The object's items, then those of the view object that `attributes` selects: "VIEW_STRING,",
    /// "VALUE,", "BORDER,", "COLOR,", "LOCATION,", "DRAW_VALUE,".
    std::string serialize(const std::string &attributes = "") override;
    int deserialize(const std::string &text) override;

    using Object::isModified;
    bool isModified() const override;
    bool isModified(ViewAttribute attribute) const;

    /// By the number of its own attributes, 0 to 5 in the order of ViewAttribute; false for any
    /// other. Use Attribute for those that every object has.
    bool isModified(int index) const;

  private:
    struct AttributeText;

    static std::span<const AttributeText> attributeTexts();
    void setModified(ViewAttribute attribute) { modified.set(static_cast<std::size_t>(attribute)); }
    int drawText(Vector at, const std::string &text) const;
    std::string serializeRgb() const;
    void deserializeRgb(const AttributeReader &reader);
    Vector placeOf(int at_location) const;
    Vector spritePlaceOf(int at_location) const;

    std::string view_string;
    int value = 0;
    bool draw_value = true;
    bool draw_sprite = false;
    bool border = true;
    Color color = COLOR_DEFAULT;
    Rgb rgb; // Of a custom colour.
    std::optional<Rgb> background;
    int location = FREE_PLACEMENT;
    std::bitset<VIEW_ATTRIBUTE_COUNT> modified;
};

} // namespace sv
