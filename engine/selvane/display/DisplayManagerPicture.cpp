// How the display manager shows a finished frame, keeps it, and saves pictures of it.

#include "selvane/core/LogManager.h"
#include "selvane/display/CellBatch.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/display/SfmlMessages.h"
#include "selvane/display/sfmlColor.h"
#include "selvane/outside/HeldTime.h"

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/Image.hpp>
#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Graphics/Sprite.hpp>
#include <SFML/Graphics/Text.hpp>
#include <SFML/Graphics/Texture.hpp>
#include <fstream>
#include <utility>

namespace sv {

namespace {

bool takePicture(const sf::RenderWindow &window, sf::Texture &picture) {
    const sf::Vector2u size = window.getSize();
    if (picture.getSize() != size && !picture.create(size.x, size.y))
        return false;
    picture.update(window);
    return true;
}

int refusePicture(const std::string &file, const char *why) {
    return logFailure("DisplayManager::saveScreenshot(): Error! '%s' is not saved: %s.",
                      file.c_str(), why);
}

} // namespace

int DisplayManager::saveScreenshot(const std::string &file) {
    if (!p_window)
        return refusePicture(file, "there is no window");
    if (!file.ends_with(".png"))
        return refusePicture(file, "its name does not end with .png");
    if (platform::isOtherThanFile(file) || !std::ofstream(file, std::ios::binary | std::ios::app))
        return refusePicture(file, "it cannot be written");
    due_pictures.push_back(file);
    return 0;
}

/// That may take a third of a second.
void DisplayManager::savePictures() {
    if (due_pictures.empty())
        return;
    const HeldTime held;
    const SfmlMessages messages;
    sf::Texture picture;
    const bool is_taken = takePicture(*p_window, picture);
    for (const std::string &file : std::exchange(due_pictures, {}))
        if (!is_taken || !picture.copyToImage().saveToFile(file))
            refusePicture(file, "it cannot be written");
}

void DisplayManager::setOverlay(std::function<void()> new_overlay) {
    overlay = std::move(new_overlay);
}

void DisplayManager::setVerticalSync(bool is_wanted) {
    if (p_window)
        p_window->setVerticalSyncEnabled(is_wanted);
}

/// Shows what is drawn. What is drawn over it, and saved of it, is neither captured nor shaken.
void DisplayManager::presentFrame() {
    if (overlay)
        overlay();
    savePictures();
    p_window->display();
    p_window->clear(colorToSFML(window_background_color));
}

/// Those of a frame that nothing comes after.
void DisplayManager::saveLastPictures() {
    if (!isPictureDue())
        return;
    cells->flush();
    savePictures();
}

void DisplayManager::keepFrame() {
    const HeldTime held;
    if (!kept_frame)
        kept_frame = std::make_unique<sf::Texture>();
    if (!takePicture(*p_window, *kept_frame))
        kept_frame.reset();
}

void DisplayManager::showAgain() {
    if (!p_window || !kept_frame)
        return;
    sf::Sprite frame(*kept_frame);
    const sf::Vector2f window_size = p_window->getView().getSize();
    const sf::Vector2f frame_size(kept_frame->getSize());
    frame.setScale(window_size.x / frame_size.x, window_size.y / frame_size.y);
    p_window->draw(frame);
    presentFrame();
}

} // namespace sv
