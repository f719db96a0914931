/// One rectangular picture of characters: its size in cells and its rows, one after the other,
/// without separators: a byte for each cell, or with `utf8:true,` a code point in UTF-8. A value,
/// copied freely; the empty frame is one with empty text.
#pragma once

#include "selvane/core/Color.h"
#include "selvane/core/Vector.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace sv {

/// As transparency character: every character is drawn.
inline constexpr char NO_TRANSPARENCY = 0;

class Frame {
  public:
    Frame() = default;

    /// The size is not checked against the text: cells beyond the end of the text are not drawn.
    Frame(int new_width, int new_height, std::string new_frame_str)
        : width(new_width), height(new_height), frame_str(std::move(new_frame_str)) {}

    /// In characters and in rows.
    int getWidth() const { return width; }
    void setWidth(int new_width) { width = new_width; }
    int getHeight() const { return height; }
    void setHeight(int new_height) { height = new_height; }

    const std::string &getString() const { return frame_str; }
    void setString(std::string new_frame_str) { frame_str = std::move(new_frame_str); }

    /// The colour of each cell, in the order of the text. A cell without one, or beyond their end,
    /// has that of draw(). Default: none.
    const std::vector<std::optional<Rgb>> &getColors() const { return colors; }
    void setColors(std::vector<std::optional<Rgb>> new_colors) { colors = std::move(new_colors); }

    /// Draws the frame with its centre at `position`, in cells of the world; characters equal to
    /// `transparency` are left out. 0, or -1 as soon as the display refuses a character.
    int draw(Vector position, Color color, char transparency) const;
    int draw(Vector position, Rgb color, char transparency) const;

  private:
    template<typename AnyColor>
    int drawCells(Vector position, AnyColor color, char transparency) const;

    int width = 0;
    int height = 0;
    std::string frame_str;
    std::vector<std::optional<Rgb>> colors;
};

} // namespace sv
