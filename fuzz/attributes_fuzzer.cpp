// A text of attributes into an object, a view object and an animation, and two steps of the world
// with what came of it.

#include "fuzzing.h"
#include "selvane/core/EventView.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/world/ViewObject.h"
#include "selvane/world/WorldManager.h"

#include <cmath>
#include <fstream>

namespace {

void startWorld(sv::WorldManager &world) {
    world.startUp();
    world.setBoundary({{0, 0}, 80, 24});
    world.setView({{0, 0}, 80, 24});
}

/// The text that a new view object, which has every attribute, writes when it has read this one.
std::string reread(const std::string &text) {
    auto *p_new = new sv::ViewObject;
    p_new->deserialize(text);
    std::string written = p_new->serialize("ALL");
    sv::WorldManager &world = sv::WorldManager::getInstance();
    world.markForDelete(p_new);
    world.deleteMarked();
    return written;
}

/// Boxes lose their fractions on the first way; from then on an object's text is what its reader
/// writes.
void travel(const std::string &text) {
    const std::string arrived = reread(reread(text));
    fuzz::require(reread(arrived) == arrived);
}

void travelAsAnimation(const std::string &text) {
    sv::Animation animation;
    animation.deserialize(text);
    const std::string written = animation.serialize("ALL");
    sv::Animation copy;
    copy.deserialize(written);
    fuzz::require(copy.serialize("ALL") == written);
}

void live(sv::WorldManager &world, const std::string &text) {
    new sv::Object; // One that the others may meet.
    auto *p_o = new sv::Object;
    p_o->deserialize(text);
    new sv::ViewObject;
    const sv::EventView points("Points", 10, true);
    for (int step = 0; step < 2; ++step) {
        world.onEvent(&points);
        world.update();
        world.draw();
    }
    const sv::Vector position = p_o->getPosition();
    fuzz::require(std::isfinite(position.x) && std::isfinite(position.y));
}

} // namespace

/// Below the search for keys, which tells of every comparison.
constexpr int detail = 20;

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/) {
    constexpr char sprite_file[] = "ball.txt";
    const fuzz::Input none(nullptr, 0);
    std::ofstream(sprite_file) << "2\n1\n1\n2\nred\no\nO\n";
    sv::ResourceManager &resources = sv::ResourceManager::getInstance();
    resources.startUp();
    fuzz::require(resources.loadSprite(sprite_file, "ball") == 0);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const fuzz::Input input(data, size, detail);
    sv::WorldManager &world = sv::WorldManager::getInstance();
    startWorld(world);
    travel(input.text);
    travelAsAnimation(input.text);
    live(world, input.text);
    world.shutDown();
    return 0;
}
