#include "selvane/resources/Sprite.h"

#include "selvane/core/LogManager.h"

#include <new>
#include <utility>

namespace sv {

namespace {

bool isCount(int count) {
    return count >= 0 && count <= MAX_FRAMES;
}

} // namespace

Sprite::Sprite(int new_max_frame_count) : max_frame_count(new_max_frame_count) {
    if (isCount(max_frame_count))
        return;
    logLine("Sprite::Sprite(): Error! Unable to allocate %d frames.", max_frame_count);
    max_frame_count = 0;
}

void Sprite::setColor(Rgb new_color) {
    color = CUSTOM;
    rgb = new_color;
}

void Sprite::setFrameColors(int index, std::vector<std::optional<Rgb>> colors) {
    frame[static_cast<std::size_t>(index)].setColors(std::move(colors));
}

int Sprite::addFrame(const Frame &new_frame) {
    if (getFrameCount() == max_frame_count)
        return -1;
    try {
        frame.push_back(new_frame);
    } catch (const std::bad_alloc &) {
        return -1;
    }
    return 0;
}

void Sprite::become(Sprite &&other) {
    width = other.width;
    height = other.height;
    max_frame_count = other.max_frame_count;
    color = other.color;
    rgb = other.rgb;
    slowdown = other.slowdown;
    transparency = other.transparency;
    frame = std::move(other.frame);
}

const Frame *Sprite::findFrame(int index) const {
    return index >= 0 && index < getFrameCount() ? &frame[static_cast<std::size_t>(index)]
                                                 : nullptr;
}

Frame Sprite::getFrame(int index) const {
    const Frame *found = findFrame(index);
    return found ? *found : Frame();
}

int Sprite::draw(int frame_index, Vector position, char transparency_char) const {
    const Frame *found = findFrame(frame_index);
    if (!found)
        return 0;
    return color == CUSTOM ? found->draw(position, rgb, transparency_char)
                           : found->draw(position, color, transparency_char);
}

} // namespace sv
