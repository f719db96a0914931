/// A labelled sequence of frames of one size and colour, shared by every object that shows it.
///
/// Whoever makes a sprite owns it: the resource manager does for those that it loads, until it
/// stops. An animation whose sprite is gone shows nothing. Game-loop thread only.
#pragma once

#include "selvane/core/Color.h"
#include "selvane/core/Vector.h"
#include "selvane/resources/Frame.h"
#include "selvane/resources/label.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace sv {

/// The most frames that a sprite has room for.
inline constexpr int MAX_FRAMES = 1'000'000;

class Sprite {
  public:
    /// Has room for that many frames, 0 to MAX_FRAMES. For any other number it says so in the log
    /// and has room for none. The room costs nothing: memory is taken frame by frame, since the
    /// number may be a file's word for more than it holds.
    explicit Sprite(int new_max_frame_count);

    ~Sprite() { *handle = nullptr; }
    Sprite(const Sprite &) = delete;
    Sprite &operator=(const Sprite &) = delete;

    /// Appends a copy; 0, or -1 if there is no room or no memory.
    int addFrame(const Frame &new_frame);

    /// The frame at `index`, or the empty frame if there is none.
    Frame getFrame(int index) const;

    int getFrameCount() const { return static_cast<int>(frame.size()); }
    int getMaxFrameCount() const { return max_frame_count; }

    /// Draws one frame with its centre at `position`, in the sprite's colour. 0, also where there
    /// is no such frame and nothing is drawn; -1 if the display refuses.
    int draw(int frame_index, Vector position, char transparency_char) const;

    /// The size of a frame, in characters and in rows. Default 0.
    int getWidth() const { return width; }
    void setWidth(int new_width) { width = new_width; }
    int getHeight() const { return height; }
    void setHeight(int new_height) { height = new_height; }

    Color getColor() const { return color; }
    void setColor(Color new_color) { color = new_color; }

    /// Drawn steps for each frame; 0 does what 1 does. Default 1.
    int getSlowdown() const { return slowdown; }
    void setSlowdown(int new_slowdown) { slowdown = new_slowdown; }

    /// The character that is not drawn, or NO_TRANSPARENCY.
    char getTransparency() const { return transparency; }
    void setTransparency(char new_transparency) { transparency = new_transparency; }

    /// Points to the sprite for as long as it lives, and to null from then on: for those who show a
    /// sprite that may go before them.
    std::shared_ptr<Sprite *const> getHandle() const { return handle; }

    const std::string &getLabel() const { return label; }
    void setLabel(std::string new_label) { label = std::move(new_label); }

  private:
    const Frame *findFrame(int index) const;

    std::shared_ptr<Sprite *> handle = std::make_shared<Sprite *>(this);
    int width = 0;
    int height = 0;
    int max_frame_count;
    Color color = COLOR_DEFAULT;
    int slowdown = 1;
    char transparency = NO_TRANSPARENCY;
    std::vector<Frame> frame; // At most max_frame_count.
    std::string label = UNDEFINED_LABEL;
};

} // namespace sv
