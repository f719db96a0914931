/// A real window on an X server of the test's own, and what it shows.
#pragma once

#include "demo/XServer.h"
#include "support/EngineTest.h"

#include <SFML/Graphics/Image.hpp>
#include <optional>
#include <string>

namespace test {

inline constexpr char FONT[] = "/usr/share/fonts/truetype/inconsolata/Inconsolata.otf";

class WindowTest : public EngineTest {
  public:
    /// Everything drawn since the last frame was shown.
    static sf::Image picture();

  protected:
    ~WindowTest() override;

    /// Starts an X server and the display manager, configured by `settings` and with FONT.
    void startDisplay(const std::string &settings = "");

    static void configure(const std::string &settings);

    std::optional<demo::XServer> server;
};

/// The most by which a component of a pixel differs, of 255; 256 if the sizes differ.
int difference(const sf::Image &a, const sf::Image &b);

/// A smallest rectangle of whole pixels, all four sides belonging to it; empty if right < left.
struct Extent {
    int left = 0;
    int top = 0;
    int right = -1;
    int bottom = -1;

    friend bool operator==(const Extent &, const Extent &) = default;
};
std::ostream &operator<<(std::ostream &out, const Extent &extent);

/// The rectangle around all pixels of exactly that colour.
Extent extentOf(const sf::Color &color, const sf::Image &image);

} // namespace test
