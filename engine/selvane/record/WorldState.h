/// The world at the end of a step as plain values: for each object what it is, where, how it moves
/// and what it shows. What a game keeps in fields of its own is not among them; it shows as soon as
/// an object moves by it.
///
/// In a file a step is what has changed since the one before. A position that follows from the
/// velocity counts as unchanged, so objects that fly straight on take no space.
#pragma once

#include "selvane/core/Vector.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace sv {

class Object;

/// The values of an object that are numbers; a number with a fraction is here as its 32 bits.
enum class StateNumber : std::uint8_t {
    X,
    Y,
    X_DIRECTION,
    Y_DIRECTION,
    SPEED,
    X_ACCELERATION,
    Y_ACCELERATION,
    BOX_X,
    BOX_Y,
    BOX_HORIZONTAL,
    BOX_VERTICAL,
    SHAPE_SIZE,
    // From here on whole numbers.
    ACTIVE,
    VISIBLE,
    ALTITUDE,
    SOLIDNESS,
    NO_SOFT,
    AVOID_COLLISIONS,
    FRAME,
    SLOWDOWN_COUNT,
    SHAPE,
    SHAPE_COLOR,
    OPACITY,
    FOLLOW_PATH,
    WAYPOINTS,
    LIFE_SPAN,
    INTERESTS,
    VALUE,
    BORDER,
    COLOR,
    LOCATION,
    DRAW_VALUE,
    // Colours: 0 for none, or 1 more than the components.
    SHAPE_RGB,
    RGB,
    BACKGROUND,
};
inline constexpr std::size_t STATE_NUMBER_COUNT = 35;

enum class StateText : std::uint8_t { TYPE, SPRITE, VIEW_STRING };
inline constexpr std::size_t STATE_TEXT_COUNT = 3;

struct ObjectState {
    std::array<std::int32_t, STATE_NUMBER_COUNT> numbers{};
    std::array<std::string, STATE_TEXT_COUNT> texts;
    unsigned seen = 0; // By which update().

    bool operator==(const ObjectState &other) const {
        return numbers == other.numbers && texts == other.texts;
    }

    std::int32_t get(StateNumber which) const { return numbers[static_cast<std::size_t>(which)]; }
    const std::string &get(StateText which) const { return texts[static_cast<std::size_t>(which)]; }
    Vector getPosition() const;
};

class WorldState {
  public:
    WorldState() = default;
    WorldState(const WorldState &) = delete;
    WorldState &operator=(const WorldState &) = delete;

    /// Takes over what the world is now. What has changed, as bytes for apply().
    std::string update();

    /// Makes the changes of another world state's update(), and removes them from the front of
    /// `bytes`; false if they are damaged.
    bool apply(std::string_view &bytes);

    /// By id; 0 is the world itself: its view as the position, its boundary as the box.
    const std::map<int, ObjectState> &getObjects() const { return objects; }

    /// The first thing in which this one, the world that is, differs from the recorded one: a
    /// phrase such as "object 3 (Saucer): x is 7.5, recorded 7". None if they are equal.
    std::optional<std::string> findDifference(const WorldState &recorded) const;

  private:
    using Objects = std::map<int, ObjectState>;

    static ObjectState stateOf(const Object &object);
    static ObjectState stateOfWorld();
    ObjectState &find(int id);
    void updateObject(int id, ObjectState now);
    void removeUnseen();

    Objects objects;
    Objects::iterator next = objects.end(); // After the last one that was found.
    unsigned updates = 0;
    // Of the update under way:
    std::string changes;
    std::uint64_t change_count = 0;
    int last_id = 0;
};

} // namespace sv
