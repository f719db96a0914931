#include "selvane/world/ViewObject.h"

#include "selvane/core/EventView.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/text.h"
#include "selvane/core/utf8.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/world/WorldManager.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace sv {

namespace {

constexpr int columns = 3;
constexpr int last_location = BOTTOM_RIGHT;

/// Saturates at the limits of int.
int addWithinLimits(int a, int b) {
    const std::int64_t sum = std::int64_t{a} + b;
    return static_cast<int>(std::clamp<std::int64_t>(sum, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

} // namespace

ViewObject::ViewObject() {
    setSolidness(SPECTRAL);
    setAltitude(MAX_ALTITUDE);
    setType("ViewObject");
    ViewObject::setPosition(placeOf(TOP_CENTER));
    location = TOP_CENTER;
    modified.set();
    registerInterest(VIEW_EVENT);
}

/// Without a border the top and bottom rows move outwards, and the middle row moves up instead of
/// staying in the middle: the screens of games are laid out for that.
Vector ViewObject::placeOf(int at_location) const {
    if (draw_sprite)
        return spritePlaceOf(at_location);
    const Box view = WorldManager::getInstance().getView();
    const int column = at_location % columns;
    const float x = view.horizontal * static_cast<float>(2 * column + 1) / 6.0F;
    switch (at_location / columns) {
    case 0:
        return {x, border ? 1.0F : 0.0F};
    case 1:
        return {x, view.vertical * 0.5F - (border ? 0.0F : 1.0F)};
    default:
        return {x, view.vertical - (border ? 2.0F : 1.0F)};
    }
}

/// Columns as for a text, rows at the edges, and the sprite inside the view if it fits. Frames are
/// drawn from half their size, rounded down, before the place.
Vector ViewObject::spritePlaceOf(int at_location) const {
    const Box view = WorldManager::getInstance().getView();
    const Vector half{getBox().horizontal / 2, getBox().vertical / 2};
    const Vector first{std::floor(half.x), std::floor(half.y)};
    const Vector last{view.horizontal - std::ceil(half.x), view.vertical - std::ceil(half.y)};
    const float x = view.horizontal * static_cast<float>(2 * (at_location % columns) + 1) / 6.0F;
    const float rows[] = {first.y, view.vertical / 2, last.y};
    return {std::max(first.x, std::min(x, last.x)), rows[at_location / columns]};
}

void ViewObject::setLocation(int new_location) {
    if (new_location < 0 || new_location > last_location) {
        logLine("ViewObject::setLocation(): Warning! Location out of range (%d). Ignored.",
                new_location);
        return;
    }
    setPosition(placeOf(new_location));
    location = new_location;
    setModified(ViewAttribute::LOCATION);
}

int ViewObject::setPosition(Vector new_position) {
    if (new_position == getPosition())
        return 0;
    if (Object::setPosition(new_position) != 0)
        return -1;
    location = FREE_PLACEMENT;
    setModified(ViewAttribute::LOCATION);
    return 0;
}

void ViewObject::setBorder(bool new_border) {
    if (new_border == border)
        return;
    border = new_border;
    setModified(ViewAttribute::BORDER);
    if (location != FREE_PLACEMENT)
        setLocation(location);
}

void ViewObject::setValue(int new_value) {
    if (new_value == value)
        return;
    value = new_value;
    setModified(ViewAttribute::VALUE);
}

void ViewObject::setViewString(const std::string &new_view_string) {
    if (new_view_string == view_string)
        return;
    view_string = new_view_string;
    setModified(ViewAttribute::VIEW_STRING);
}

void ViewObject::setDrawSprite(bool new_draw_sprite) {
    draw_sprite = new_draw_sprite;
    if (location != FREE_PLACEMENT)
        setLocation(location);
}

void ViewObject::setColor(Color new_color) {
    if (new_color == color)
        return;
    color = new_color;
    setModified(ViewAttribute::COLOR);
}

void ViewObject::setColor(Rgb new_color) {
    if (color == CUSTOM && new_color == rgb)
        return;
    color = CUSTOM;
    rgb = new_color;
    setModified(ViewAttribute::COLOR);
}

void ViewObject::setBackground(const std::optional<Rgb> &new_background) {
    if (new_background == background)
        return;
    background = new_background;
    setModified(ViewAttribute::COLOR);
}

int ViewObject::eventHandler(const Event *p_event) {
    if (p_event->getType() != VIEW_EVENT)
        return Object::eventHandler(p_event);
    const auto *change = eventCast<EventView>(p_event);
    if (!change || change->getTag() != view_string)
        return 0;
    setValue(change->getDelta() ? addWithinLimits(value, change->getValue()) : change->getValue());
    return 1;
}

int ViewObject::draw() {
    if (draw_sprite)
        return drawAt(WorldManager::getInstance().getView().corner + getPosition());
    std::string text = border ? " " : "";
    text += view_string;
    if (draw_value)
        text.append(1, ' ').append(toString(value));
    if (border)
        text += ' ';

    const Vector at = WorldManager::getInstance().getView().corner + getPosition();
    int result = drawText(at, text);
    if (!border)
        return result;

    const int length = static_cast<int>(cellCount(text));
    const std::string dashes(cellCount(text), '-');
    const int half = length / 2;
    const float left = at.x - static_cast<float>(half) - 1;
    const float right = left + static_cast<float>(length) + 1;
    result += drawText({at.x, at.y - 1}, dashes);
    result += drawText({at.x, at.y + 1}, dashes);
    result += drawText({left, at.y}, "|");
    result += drawText({right, at.y}, "|");
    return result;
}

int ViewObject::drawText(Vector at, const std::string &text) const {
    DisplayManager &display = DisplayManager::getInstance();
    if (color != CUSTOM && !background)
        return display.drawString(at, text, CENTER_JUSTIFIED, color);
    return display.drawString(at, text, CENTER_JUSTIFIED, getRgb(), background);
}

bool ViewObject::isModified() const {
    for (std::size_t i = 0; i < modified.size(); ++i) {
        logLine(10, "ViewObject::isModified(): %d is %s", static_cast<int>(i),
                modified.test(i) ? "true" : "false");
        if (modified.test(i))
            return true;
    }
    return Object::isModified();
}

bool ViewObject::isModified(ViewAttribute attribute) const {
    return modified.test(static_cast<std::size_t>(attribute));
}

bool ViewObject::isModified(int index) const {
    return index >= 0 && index < VIEW_ATTRIBUTE_COUNT &&
           isModified(static_cast<ViewAttribute>(index));
}

} // namespace sv
