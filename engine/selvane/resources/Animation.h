/// Which frame of which sprite an object shows now. Each draw counts a step and moves on to the
/// next frame when the sprite's slowdown says so.
///
/// A value: each object has its own. It borrows the sprite, and shows nothing once that is gone.
/// Game-loop thread only.
#pragma once

#include "selvane/core/Box.h"
#include "selvane/core/Vector.h"

#include <memory>
#include <string>
#include <utility>

namespace sv {

class Sprite;

/// The step count of an animation that stays on its frame.
inline constexpr int FROZEN = -1;

class Animation {
  public:
    /// "sprite_name:...,sprite_index:...,sprite_slowdown_count:...," if the selector wants it (see
    /// isAttributeWanted; the name is "ANIMATION,"), and then the animation counts as unmodified;
    /// an empty text otherwise.
    virtual std::string serialize(const std::string &attributes = "");

    /// Takes over what the text has of the same items; the others stay. A sprite is looked up by
    /// its label, and one that is not loaded leaves the sprite as it is. Returns 0.
    virtual int deserialize(const std::string &text);

    Animation() = default;
    Animation(const Animation &) = default;
    Animation &operator=(const Animation &) = default;
    virtual ~Animation() = default;

    /// Shows `new_sprite` from its first frame; null shows nothing and keeps the name. The count
    /// of steps goes on.
    void setSprite(Sprite *new_sprite);

    /// The sprite shown, or null: there is none, or it is gone.
    Sprite *getSprite() const { return sprite ? *sprite : nullptr; }

    /// The sprite's label, by which the animation is written and read.
    void setName(const std::string &new_name);
    const std::string &getName() const { return name; }

    /// The frame shown, from 0. Any number may be set; one that is no frame shows nothing.
    void setIndex(int new_index);
    int getIndex() const { return index; }

    /// Drawn steps counted towards the next frame, or FROZEN.
    void setSlowdownCount(int new_slowdown_count);
    int getSlowdownCount() const { return slowdown_count; }

    /// The sprite's box around an object's position; without a sprite a single cell, just short of
    /// touching its neighbours.
    Box getBox() const;

    /// Whether anything changed since it was last written. A new animation counts as changed.
    bool isModified() const { return modified; }

    // Called by the engine.

    /// Whether the last frame has been shown to its end since the last takeEnd().
    bool hasEnded() const { return has_ended; }
    bool takeEnd() { return std::exchange(has_ended, false); }

    /// While they are held, animations stay on the frame that they show.
    static void holdAll(bool are_held);

    /// Draws the frame shown with its centre at `position`, in cells of the world, and counts the
    /// step. 0, or -1 if the display refuses; the step counts all the same.
    int draw(Vector position);

  private:
    void advance(const Sprite &shown);

    std::shared_ptr<Sprite *const> sprite; // Where it is, or null once it is gone.
    int index = 0;
    int slowdown_count = 0;
    std::string name;
    bool modified = true;
    bool has_ended = false;
};

} // namespace sv
