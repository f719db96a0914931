#include "pictures/Scene.h"

#include "selvane/display/DisplayManager.h"

#include <SFML/Graphics/Image.hpp>
#include <utility>

namespace pictures {

namespace {

/// To one of 16 levels: fewer colours make smaller files.
sf::Uint8 rounded(sf::Uint8 component) {
    return static_cast<sf::Uint8>((component + 8) / 17 * 17);
}

sf::Image withFewColors(sf::Image image) {
    for (unsigned y = 0; y < image.getSize().y; ++y)
        for (unsigned x = 0; x < image.getSize().x; ++x) {
            const sf::Color color = image.getPixel(x, y);
            image.setPixel(x, y, {rounded(color.r), rounded(color.g), rounded(color.b)});
        }
    return image;
}

void reduceColors(const std::string &file) {
    sf::Image image;
    if (image.loadFromFile(file))
        withFewColors(std::move(image)).saveToFile(file);
}

} // namespace

Result play(const Scene &scene, const std::string &tree, const std::string &picture) {
    const bool in_window = !picture.empty();
    sv::Session session(
        scene.main,
        {.config = scene.size, .folder = tree + "/" + scene.folder, .in_window = in_window});
    session.start();
    scene.script(session);
    if (in_window)
        sv::DisplayManager::getInstance().saveScreenshot(picture);
    session.play();
    if (in_window)
        reduceColors(picture);
    Result result;
    result.screen = session.screen() + "\n";
    session.end();
    result.log = session.log();
    result.status = session.exitStatus();
    return result;
}

} // namespace pictures
