#include "support/WindowTest.h"

#include "selvane/core/Config.h"
#include "selvane/display/DisplayManager.h"

#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Graphics/Texture.hpp>
#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace test {

WindowTest::~WindowTest() {
    // Before the server goes: a client that loses its server dies.
    sv::DisplayManager &display = sv::DisplayManager::getInstance();
    if (display.getFlushedWindow())
        display.shutDown();
}

void WindowTest::configure(const std::string &settings) {
    sv::Config::getInstance().loadConfig(settings + ",font_file:" + FONT);
}

void WindowTest::startDisplay(const std::string &settings) {
    if (!server)
        server.emplace();
    ASSERT_TRUE(server->isRunning());
    configure(settings);
    ASSERT_EQ(sv::DisplayManager::getInstance().startUp(), 0);
}

sf::Image WindowTest::picture() {
    sf::RenderWindow &window = *sv::DisplayManager::getInstance().getFlushedWindow();
    sf::Texture texture;
    if (!texture.create(window.getSize().x, window.getSize().y))
        return {};
    texture.update(window);
    return texture.copyToImage();
}

int difference(const sf::Image &a, const sf::Image &b) {
    if (a.getSize() != b.getSize())
        return 256;
    const std::size_t bytes = std::size_t{4} * a.getSize().x * a.getSize().y;
    const sf::Uint8 *in_a = a.getPixelsPtr();
    const sf::Uint8 *in_b = b.getPixelsPtr();
    if (std::memcmp(in_a, in_b, bytes) == 0)
        return 0;
    int most = 0;
    for (std::size_t i = 0; i < bytes; ++i)
        if (i % 4 != 3) // Its opacity is of no account.
            most = std::max(most, std::abs(in_a[i] - in_b[i]));
    return most;
}

std::ostream &operator<<(std::ostream &out, const Extent &extent) {
    return out << "x " << extent.left << " to " << extent.right << ", y " << extent.top << " to "
               << extent.bottom;
}

Extent extentOf(const sf::Color &color, const sf::Image &image) {
    const auto width = static_cast<int>(image.getSize().x);
    const auto height = static_cast<int>(image.getSize().y);
    Extent extent{width, height, -1, -1};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (image.getPixel(static_cast<unsigned>(x), static_cast<unsigned>(y)) != color)
                continue;
            extent = {std::min(extent.left, x), std::min(extent.top, y), std::max(extent.right, x),
                      std::max(extent.bottom, y)};
        }
    }
    return extent.right < 0 ? Extent() : extent;
}

} // namespace test
