#include "selvane/desk/LiveFiles.h"

#include "selvane/core/LogManager.h"
#include "selvane/resources/readSprite.h"
#include "selvane/resources/spriteFile.h"
#include "selvane/world/ViewObject.h"
#include "selvane/world/WorldManager.h"

#include <algorithm>
#include <utility>

namespace sv {

namespace {

std::string faultIn(const std::string &name) {
    return name + ":" + std::to_string(sprite_fault.line) + ": " + sprite_fault.reason;
}

Box boxOf(Sprite &sprite) {
    Animation animation;
    animation.setSprite(&sprite);
    return animation.getBox();
}

/// An object's frame may be gone, and its box another one.
void fit(Object &object, const Sprite &sprite, bool has_its_box) {
    Animation shown = object.getAnimation();
    const int last = std::max(sprite.getFrameCount() - 1, 0);
    if (shown.getIndex() > last)
        shown.setIndex(last);
    else if (!has_its_box || shown.getBox() == object.getBox())
        return;
    object.setAnimation(shown, has_its_box);
    auto *fixed = dynamic_cast<ViewObject *>(&object);
    if (fixed && fixed->getDrawSprite() && fixed->getLocation() != FREE_PLACEMENT)
        fixed->setLocation(fixed->getLocation());
}

void replace(Sprite &sprite, Sprite &&fresh) {
    const Box old_box = boxOf(sprite);
    sprite.become(std::move(fresh));
    for (Object *object : WorldManager::getInstance().getAllObjects(true))
        if (object->getAnimation().getSprite() == &sprite)
            fit(*object, sprite, object->getBox() == old_box);
}

/// Empty, or what is wrong.
std::string loadSprite(Sprite &sprite, const LoadedFile &origin) {
    std::ifstream file = openSprite(origin.path, origin.name);
    const auto fresh = file.is_open() ? readSprite(file, origin.name) : nullptr;
    if (!fresh)
        return faultIn(origin.name);
    replace(sprite, std::move(*fresh));
    return "";
}

/// First on trial: a sound that cannot be loaded is silent.
std::string loadSound(const LoadedFile &origin) {
    if (Sound().loadSound(origin.path) != 0)
        return origin.name + ":1: Cannot load sound.";
    origin.sound->loadSound(origin.path);
    return "";
}

} // namespace

LiveFiles::LiveFiles() {
    ResourceManager::getInstance().setLoadListener([this](const LoadedFile &file) { add(file); });
}

LiveFiles::~LiveFiles() {
    ResourceManager::getInstance().setLoadListener(nullptr);
}

/// A file that could not be loaded before is forgotten.
void LiveFiles::add(const LoadedFile &origin) {
    std::erase_if(files, [&](const File &file) {
        return !file.sprite && !file.origin.sound && file.origin.name == origin.name &&
               file.origin.label == origin.label;
    });
    const platform::FileStamp stamp = platform::stampOf(origin.path);
    File file{.origin = origin, .sprite = {}, .loaded = stamp, .seen = stamp, .fault = {}};
    if (origin.sprite)
        file.sprite = origin.sprite->getHandle();
    else if (!origin.sound)
        file.fault = faultIn(origin.name);
    files.push_back(std::move(file));
}

bool LiveFiles::File::isSaved() {
    const platform::FileStamp now = platform::stampOf(origin.path);
    const bool is_at_rest = now == std::exchange(seen, now);
    return is_at_rest && now != std::exchange(loaded, now);
}

void LiveFiles::look() {
    for (std::size_t i = 0; i < files.size(); ++i)
        if (files[i].isSaved())
            load(files[i]);
}

void LiveFiles::load(File &file) {
    const LoadedFile origin = file.origin;
    if (!file.sprite && !origin.sound) {
        ResourceManager::getInstance().loadSprite(origin.name, origin.label); // add() takes it.
        return;
    }
    if (file.sprite && !*file.sprite)
        return; // The resource manager was stopped.
    file.fault = file.sprite ? loadSprite(**file.sprite, origin) : loadSound(origin);
    if (file.fault.empty())
        logLine("Desk: '%s' was loaded anew.", origin.name.c_str());
    else
        logFailure("Desk: Warning! %s What was loaded before stays.", file.fault.c_str());
}

std::string LiveFiles::getFault() const {
    const auto faulty =
        std::ranges::find_if(files, [](const File &file) { return !file.fault.empty(); });
    return faulty != files.end() ? faulty->fault : "";
}

} // namespace sv
