#include "pictures/Scene.h"

#include "selvane/core/Event.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/world/spawn.h"

#include <SFML/Graphics/Image.hpp>
#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Graphics/Texture.hpp>

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

/// At the next step, saves what was drawn in the step before, which then is shown.
class Photographer : public sv::Object {
  public:
    explicit Photographer(const std::string &new_file) : file(new_file) {
        setSolidness(sv::SPECTRAL);
        setVisible(false);
        registerInterest(sv::STEP_EVENT);
    }

    int eventHandler(const sv::Event * /*p_event*/) override {
        sf::RenderWindow *window = sv::DisplayManager::getInstance().getWindow();
        sf::Texture texture;
        if (window && texture.create(window->getSize().x, window->getSize().y)) {
            texture.update(*window);
            withFewColors(texture.copyToImage()).saveToFile(file);
        }
        return sv::WorldManager::getInstance().retire(this);
    }

  private:
    std::string file;
};

} // namespace

Result play(const Scene &scene, const std::string &tree, const std::string &picture) {
    const bool in_window = !picture.empty();
    sv::Session session(
        scene.main,
        {.config = scene.size, .folder = tree + "/" + scene.folder, .in_window = in_window});
    session.start();
    scene.script(session);
    if (in_window)
        sv::spawn<Photographer>(picture);
    session.play();
    Result result;
    result.screen = session.screen() + "\n";
    session.end();
    result.log = session.log();
    result.status = session.exitStatus();
    return result;
}

} // namespace pictures
