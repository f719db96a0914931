/// A labelled sequence of frames of one size, shared by every object that shows it.
///
/// The resource manager owns the sprites that it loads, until it stops; any other belongs to
/// whoever made it. An animation whose sprite is gone shows nothing. Game-loop thread only.
#pragma once

#include "selvane/core/Color.h"
#include "selvane/core/Vector.h"
#include "selvane/resources/Frame.h"
#include "selvane/resources/Resource.h"

#include <memory>
#include <optional>
#include <vector>

namespace sv {

/// The most frames that a sprite has room for.
inline constexpr int MAX_FRAMES = 1'000'000;

class Sprite : public Resource {
  public:
    /// Has room for that many frames, 0 to MAX_FRAMES. Any other number is logged and gives room
    /// for none. Memory is allocated frame by frame, since a file may claim more than it holds.
    explicit Sprite(int new_max_frame_count);

    ~Sprite() { *handle = nullptr; }

    /// Appends a copy; 0, or -1 if there is no room or no memory.
    int addFrame(const Frame &new_frame);

    /// The frame at `index`, or the empty frame if there is none.
    Frame getFrame(int index) const;

    int getFrameCount() const { return static_cast<int>(frame.size()); }
    int getMaxFrameCount() const { return max_frame_count; }

    /// The size of a frame, in characters and in rows. Default 0.
    int getWidth() const { return width; }
    void setWidth(int new_width) { width = new_width; }
    int getHeight() const { return height; }
    void setHeight(int new_height) { height = new_height; }

    /// Of the cells that have none of their own, see Frame::setColors().
    Color getColor() const { return color; }
    void setColor(Color new_color) { color = new_color; }

    /// Any colour; getColor() is `CUSTOM` then.
    void setColor(Rgb new_color);
    /// The colour in any case. White for a `CUSTOM` one that was not set.
    Rgb getRgb() const { return color == CUSTOM ? rgb : Rgb(color); }

    /// Drawn steps for each frame; 0 does what 1 does. Default 1.
    int getSlowdown() const { return slowdown; }
    void setSlowdown(int new_slowdown) { slowdown = new_slowdown; }

    /// The character that is not drawn, or NO_TRANSPARENCY.
    char getTransparency() const { return transparency; }
    void setTransparency(char new_transparency) { transparency = new_transparency; }

    // Called by the engine.

    /// See Frame::setColors(). REQUIRES: there is such a frame.
    void setFrameColors(int index, std::vector<std::optional<Rgb>> colors);

    /// Draws one frame with its centre at `position`, in the sprite's colour. 0, also if there is
    /// no such frame; -1 if the display refuses.
    int draw(int frame_index, Vector position, char transparency_char) const;

    /// Becomes the other one in everything but its label, for all who show it.
    void become(Sprite &&other);

    /// Points to the sprite while it lives, and to null afterwards: for an animation, whose sprite
    /// may be destroyed first.
    std::shared_ptr<Sprite *const> getHandle() const { return handle; }

  private:
    const Frame *findFrame(int index) const;

    std::shared_ptr<Sprite *> handle = std::make_shared<Sprite *>(this);
    int width = 0;
    int height = 0;
    int max_frame_count;
    Color color = COLOR_DEFAULT;
    Rgb rgb; // Of a custom colour.
    int slowdown = 1;
    char transparency = NO_TRANSPARENCY;
    std::vector<Frame> frame; // At most max_frame_count.
};

} // namespace sv
