// A sprite file of either format, from the file to what an object shows of it.

#include "fuzzing.h"
#include "selvane/resources/Animation.h"
#include "selvane/resources/ResourceManager.h"

#include <fstream>

namespace {

constexpr char file_name[] = "sprite.txt";
constexpr char label[] = "sprite";

/// What was loaded is whole, and no larger than the file.
void examine(const sv::Sprite &sprite, std::size_t file_size) {
    const auto cells =
        static_cast<std::size_t>(sprite.getWidth()) * static_cast<std::size_t>(sprite.getHeight());
    const int count = sprite.getFrameCount();
    fuzz::require(cells > 0 && count > 0 && count == sprite.getMaxFrameCount());
    fuzz::require(cells * static_cast<std::size_t>(count) <= file_size);
    for (int i = 0; i < count; ++i) {
        const sv::Frame frame = sprite.getFrame(i);
        fuzz::require(frame.getString().size() == cells);
        fuzz::require(frame.getColors().empty() || frame.getColors().size() == cells);
    }
}

void show(sv::Sprite &sprite) {
    sv::Animation animation;
    animation.setSprite(&sprite);
    for (int step = 0; step < 10; ++step) {
        animation.draw({1, 1});
        const int index = animation.getIndex();
        fuzz::require(index >= 0 && index < sprite.getFrameCount());
    }
    const std::string text = animation.serialize("ALL");
    sv::Animation copy;
    copy.deserialize(text);
    fuzz::require(copy.serialize("ALL") == text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const fuzz::Input input(data, size);
    std::ofstream(file_name, std::ios::binary) << input.text;
    sv::ResourceManager &resources = sv::ResourceManager::getInstance();
    resources.startUp();
    const bool is_loaded = resources.loadSprite(file_name, label) == 0;
    sv::Sprite *p_sprite = resources.getSprite(label);
    fuzz::require(is_loaded == (p_sprite != nullptr));
    if (p_sprite != nullptr) {
        examine(*p_sprite, size);
        show(*p_sprite);
    }
    resources.shutDown();
    return 0;
}
