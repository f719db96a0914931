#include "selvane/resources/Animation.h"

#include "selvane/core/LogManager.h"
#include "selvane/core/attributes.h"
#include "selvane/core/text.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/resources/Sprite.h"

#include <limits>

namespace sv {

namespace {

bool are_all_held = false;

/// Stores the new value; whether it differs from the old one.
template<typename T>
bool replace(T &value, const T &new_value) {
    const bool differs = value != new_value;
    value = new_value;
    return differs;
}

} // namespace

void Animation::setSprite(Sprite *new_sprite) {
    if (new_sprite)
        setName(new_sprite->getLabel());
    sprite = new_sprite ? new_sprite->getHandle() : nullptr;
    modified = true;
    has_ended = false;
    setIndex(0);
}

void Animation::setName(const std::string &new_name) {
    modified |= replace(name, new_name);
}

void Animation::setIndex(int new_index) {
    modified |= replace(index, new_index);
}

void Animation::setSlowdownCount(int new_slowdown_count) {
    modified |= replace(slowdown_count, new_slowdown_count);
}

void Animation::holdAll(bool are_held) {
    are_all_held = are_held;
}

int Animation::draw(Vector position) {
    const Sprite *shown = getSprite();
    if (!shown)
        return 0;
    const int result = shown->draw(index, position, shown->getTransparency());
    if (slowdown_count != FROZEN && !are_all_held)
        advance(*shown);
    return result;
}

// Index and count may be any int, since a text can set them: neither is added to at the limit.
void Animation::advance(const Sprite &shown) {
    modified = true;
    const bool counts_on = slowdown_count < std::numeric_limits<int>::max() &&
                           slowdown_count + 1 < shown.getSlowdown();
    slowdown_count = counts_on ? slowdown_count + 1 : 0;
    if (counts_on)
        return;
    has_ended = index >= shown.getFrameCount() - 1;
    index = has_ended ? 0 : index + 1;
}

Box Animation::getBox() const {
    const Sprite *shown = getSprite();
    if (!shown)
        return Box::cell();
    const auto width = static_cast<float>(shown->getWidth());
    const auto height = static_cast<float>(shown->getHeight());
    return {{width * -0.5F, height * -0.5F}, width, height};
}

std::string Animation::serialize(const std::string &attributes) {
    if (!isAttributeWanted(attributes, "ANIMATION,", modified))
        return "";
    modified = false;
    return attribute("sprite_name", name) + attribute("sprite_index", toString(index)) +
           attribute("sprite_slowdown_count", toString(slowdown_count));
}

int Animation::deserialize(const std::string &text) {
    const AttributeReader reader(text, "Animation::deserialize():", 20);
    if (const std::string label = reader.readText("sprite_name", "'"); !label.empty()) {
        if (Sprite *found = ResourceManager::getInstance().getSprite(label))
            setSprite(found);
        else
            logLine("Animation::Match(): Sprite '%s' not found", printable(label).c_str());
    }
    if (const auto new_index = reader.readInt("sprite_index"))
        setIndex(*new_index);
    if (const auto new_count = reader.readInt("sprite_slowdown_count"))
        setSlowdownCount(*new_count);
    return 0;
}

} // namespace sv
