/// Lines and small text over a frame that is finished, in pixels of the configured window: nothing
/// that a game draws shows a difference. Collects them, and draws them all at once.
///
/// Make one when there is a window, for one frame. Game-loop thread only.
#pragma once

#include "selvane/core/Color.h"
#include "selvane/core/Vector.h"

#include <string>
#include <vector>

namespace sf {
class Color;
class Vertex;
} // namespace sf

namespace sv {

class Overlay {
  public:
    /// REQUIRES: the display manager has a window.
    explicit Overlay(bool has_large_text = false);
    ~Overlay();
    Overlay(const Overlay &) = delete;
    Overlay &operator=(const Overlay &) = delete;

    void addLine(Vector from, Vector to, Color color);

    /// The outline of a rectangle.
    void addBox(Vector corner, Vector extent, Color color);

    /// On a dark ground, with its upper left corner at `corner`; what does not fit on the window is
    /// cut off at its end. UTF-8.
    void addText(Vector corner, const std::string &text, Color color);

    /// Of a line of text.
    float getTextHeight() const;
    float widthOf(const std::string &text) const;

    void draw();

  private:
    void addQuad(Vector corner, Vector extent, const sf::Color &color);

    unsigned text_size;
    std::vector<sf::Vertex> vertices; // Four for each quad.
};

} // namespace sv
