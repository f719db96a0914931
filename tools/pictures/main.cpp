// Plays every scene and writes its screen as a text and as a picture.
//   make_pictures TREE [NAME]
// Into TREE/examples/screens and TREE/examples/pictures. With a NAME, only that one.

#include "pictures/Scene.h"

#include "demo/XServer.h"

#include <SFML/Graphics/Image.hpp>
#include <fstream>
#include <iostream>
#include <utility>

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

int main(int argc, char *argv[]) {
    if (argc < 2 || argc > 3) {
        std::cerr << "usage: make_pictures TREE [NAME]\n";
        return 2;
    }
    const std::string tree = argv[1];
    const demo::XServer server;
    if (!server.isRunning()) {
        std::cerr << "make_pictures: cannot start an X server; is Xvfb installed?\n";
        return 1;
    }
    bool is_fine = true;
    for (const pictures::Scene &scene : pictures::scenes()) {
        const std::string name = scene.name;
        if (argc == 3 && name != argv[2])
            continue;
        const std::string picture = tree + "/examples/pictures/" + name + ".png";
        const pictures::Result result = play(scene, tree, picture);
        reduceColors(picture);
        std::ofstream(tree + "/examples/screens/" + name + ".txt") << result.screen;
        std::cout << name << ": status " << result.status << "\n" << result.screen << std::flush;
        is_fine = is_fine && result.status == 0;
    }
    return is_fine ? 0 : 1;
}
