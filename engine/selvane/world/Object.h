/// The base of everything that lives in a game: it has a position in the world, moves, collides,
/// shows a sprite or a figure, and receives events.
///
/// An object is made with spawn() or `new` and never deleted by the game: the world manager does
/// that, after WorldManager::markForDelete() or at its shut-down. A variable or plain member lives
/// in the world too, and is taken out instead; one in a std::unique_ptr would be deleted twice.
/// Game-loop thread only.
#pragma once

#include "selvane/core/Box.h"
#include "selvane/core/Vector.h"
#include "selvane/resources/Animation.h"
#include "selvane/world/Path.h"
#include "selvane/world/Shape.h"

#include <bitset>
#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace sv {

class Event;
class Manager;
class PathFind;

/// The highest layer: altitudes run from 0, drawn first, to this.
inline constexpr int MAX_ALTITUDE = 4;
/// The most interests that one object may have.
inline constexpr int MAX_OBJ_EVENTS = 100;

/// How an object collides. Hard and soft ones are solid: they collide, and two hard ones stop each
/// other. Spectral ones never collide.
enum Solidness : int { HARD = 0, SOFT = 1, SPECTRAL = 2 };

/// What serialize() can write. Each has a flag: whether it changed since it was last written.
enum class Attribute {
    ID,
    ACTIVE,
    VISIBLE,
    EVENTS,
    BOX,
    POSITION,
    TYPE,
    ANIMATION,
    ALTITUDE,
    SOLIDNESS,
    NO_SOFT,
    SPEED,
    DIRECTION,
    ACCELERATION,
    SHAPE,
    PATH,
    FOLLOW_PATH,
    AVOID_COLLISIONS,
};
inline constexpr int ATTRIBUTE_COUNT = 18;

/// A life span: until the last frame of the object's animation has been shown to its end.
inline constexpr int UNTIL_ANIMATION_ENDS = -1;

/// Deletes a search for a path; defined where searches are.
struct PathFindDeleter {
    void operator()(PathFind *path_find) const;
};

class Object {
  public:
    virtual ~Object();

    /// In cells of the world. Only moves the object: no collision, no "sv-out", no view that
    /// follows; WorldManager::moveObject() does those. 0, or -1 for a position that is not finite.
    /// Here and in the other setters, the object then keeps its value, and the first refusal is
    /// logged.
    virtual int setPosition(Vector new_position);

    /// Receives an event, which ends with the handler; 1 if it was handled, 0 if it was ignored.
    /// The base follows the path that an "sv-path" event brings.
    virtual int eventHandler(const Event *p_event);

    /// Draws the sprite, then the figure if it has one. 0, or -1 if the display refuses.
    virtual int draw();

    /// The attributes that `attributes` selects (see isAttributeWanted), as "key:value," items;
    /// they count as unmodified from then on. The names are those of Attribute with a comma behind.
    virtual std::string serialize(const std::string &attributes = "");

    /// Sets every attribute that the text has; invalid values are refused as the setters refuse
    /// them. Returns 0.
    virtual int deserialize(const std::string &text);

    /// Whether any attribute changed since it was last written. All of a new object's have.
    virtual bool isModified() const;
    virtual bool isModified(Attribute attribute) const;

    /// By the number of an attribute, 0 to 17 in the order of Attribute; false for any other.
    bool isModified(int index) const;

    /// An active, visible, hard object with the next free id at (1, 1), without sprite and figure.
    /// One that only listens or counts should be SPECTRAL, or others collide with it there.
    Object();
    Object(const Object &) = delete;
    Object &operator=(const Object &) = delete;

    /// From 1, in the order of creation. Later objects get ids above `new_id`.
    void setId(int new_id);
    int getId() const { return id; }

    void setType(const std::string &new_type);
    std::string getType() const { return type; }

    // The setters below change nothing if the value is the current one. 0, or -1 if the value is
    // out of range or the scene graph refuses; the object then keeps its value.

    /// An inactive object is not moved, drawn or collided with, and gets no events but the
    /// "sv-path" of its own search. One that becomes inactive during its move completes that move.
    /// To remove an object at once, make it inactive and mark it for deletion.
    int setActive(bool new_is_active);
    bool isActive() const { return is_active; }

    int setVisible(bool new_is_visible);
    bool isVisible() const { return is_visible; }

    /// 0 to MAX_ALTITUDE, default 2; higher is drawn later. Refused while active and invisible.
    int setAltitude(int new_altitude);
    int getAltitude() const { return altitude; }

    /// Default: HARD.
    int setSolidness(Solidness new_solidness);
    Solidness getSolidness() const { return solidness; }
    bool isSolid() const { return solidness == HARD || solidness == SOFT; }

    /// Relative to the position. Default: Box::cell(). With a new box the object is drawn after the
    /// others of its altitude.
    int setBox(const Box &new_box);
    Box getBox() const { return box; }

    // From here on setters store what they are given, if its numbers are finite.

    Vector getPosition() const { return position; }

    /// The direction of motion, of length 1 or 0.
    void setDirection(Vector new_direction);
    Vector getDirection() const { return direction; }

    /// Cells a step along the direction.
    void setSpeed(float new_speed);
    float getSpeed() const { return speed; }

    /// Speed and direction in one, in cells a step.
    void setVelocity(Vector velocity);
    Vector getVelocity() const { return direction * speed; }

    /// Added to the velocity once a step.
    void setAcceleration(Vector new_acceleration);
    Vector getAcceleration() const { return acceleration; }

    /// The position after the next step if nothing is in the way.
    Vector predictPosition() const { return position + getVelocity(); }

    /// Whether soft objects stop it. Default: false.
    void setNoSoft(bool new_no_soft);
    bool getNoSoft() const { return no_soft; }

    /// Whether a hard object slides along hard obstacles instead of stopping. Default: false. While
    /// it slides, or has no way to, neither side gets an event of that collision.
    void setAvoidCollisions(bool new_avoid_collisions);
    bool getAvoidCollisions() const { return avoid_collisions; }

    /// Copies sprite, frame and step count. With `set_box` the object gets the animation's box too,
    /// and keeps its place among those of its altitude.
    void setAnimation(const Animation &new_animation, bool set_box);
    Animation getAnimation() const { return animation; }

    /// Shows the sprite that is loaded under that label and takes its box. 0, or -1 if there is
    /// none.
    int setSprite(const std::string &label);

    /// The object is deleted at the end of that many updates, those counted while it is active; or,
    /// with UNTIL_ANIMATION_ENDS, when its animation has ended or there is no sprite. 0, the
    /// default, is for ever. 0, or -1 for other negative numbers.
    int setLifeSpan(int new_life_span);

    /// What is left of it.
    int getLifeSpan() const { return life_span; }

    void setShape(const Shape &new_shape);
    Shape getShape() const { return shape; }

    void setPath(const Path &new_path);

    /// The waypoints still ahead, valid until the object's next step. During the setPosition() that
    /// reaches a waypoint, that waypoint is the first.
    const Path &getPath() const;

    /// Whether it follows its path with its speed. Turns it towards the first waypoint.
    void setFollowPath(bool new_follow_path);
    bool getFollowPath() const { return follow_path; }

    /// Starts a search for a path from the nearest cell to the cell nearest to `to`, or to the
    /// first cell in which it touches the target; a deleted target counts as where it was. An
    /// "sv-path" event ends the search some steps later, and the base follows the path that was
    /// found. The path touches corners of hard objects: a hard object that does not avoid
    /// collisions stops there.
    ///
    /// 0, or -1 with a line in the log: an end outside the world, or, at level 5, a search under
    /// way or a goal already reached.
    int findPath(Vector to);
    int findPath(const Object *target);

    /// Whether a search is under way: its "sv-path" event is still to come.
    bool isSearching() const;

    /// Cancels its search for a path, if there is one: no event will come.
    void dropPathFind();

    /// Asks the manager that delivers events of that type for them; each registration is one call
    /// of the handler. 0, or -1 if that manager refuses, or if the object has MAX_OBJ_EVENTS
    /// interests. A game's own types should not begin with "sv-": such a type gets a warning.
    int registerInterest(const std::string &event_type);

    /// 0, or -1 if it was not registered.
    int unregisterInterest(const std::string &event_type);

    /// The types it registered for, in that order.
    const std::vector<std::string> &getInterests() const { return event_name; }

    // As C++ has them for `new`, but the world learns which objects it may delete: not those of a
    // class with its own operator new, or of `::new`. Arrays of objects do not compile.
    static void *operator new(std::size_t size);
    static void *operator new(std::size_t size, const std::nothrow_t &) noexcept;
    static void *operator new(std::size_t size, std::align_val_t alignment);
    static void *operator new(std::size_t size, std::align_val_t alignment,
                              const std::nothrow_t &) noexcept;
    static void *operator new(std::size_t /*size*/, void *place) noexcept { return place; }
    static void *operator new[](std::size_t size) = delete;
    static void operator delete(void *block) noexcept;
    static void operator delete(void *block, const std::nothrow_t &) noexcept;
    static void operator delete(void *block, std::align_val_t alignment) noexcept;
    static void operator delete(void *block, std::align_val_t alignment,
                                const std::nothrow_t &) noexcept;
    static void operator delete(void * /*block*/, void * /*place*/) noexcept {}

    // Called by the engine.

    /// The next object's id is 1 again.
    static void restartIds();

    /// Whether the world may delete it.
    bool isMadeByNew() const;

    /// Once a step, after the object's move: turns it towards its next waypoint, past those
    /// reached.
    void stepPath() {
        if (follow_path)
            followPath();
    }

    /// Once a step, after stepPath(): adds the acceleration to the velocity.
    void stepAcceleration() {
        if (acceleration != Vector{})
            setVelocity(getVelocity() + acceleration);
    }

    /// Once a step, after stepAcceleration(): marks the object if its life span has run out, and
    /// sends it the end of its animation. A handler may delete it.
    void stepLife() {
        if (life_span != 0 || animation.hasEnded())
            spendLife();
    }

  protected:
    /// As draw(), elsewhere in the world than at its position.
    int drawAt(Vector place);

  private:
    friend class Manager;      // Counts its registrations.
    friend class SceneGraph;   // Counts its filings.
    friend class SolidObjects; // Notes its place.
    friend class WorldState;   // Reads it for a record, which a copy of each value would slow down.

    /// Warnings that are logged once for each object, since their cause may last.
    enum class Warning { NO_SPEED, NOT_FINITE, REGISTERED_TWICE, TOO_MANY_EVENTS };

    bool isFirst(Warning warning);
    bool isRefused(const char *name, Vector value);
    bool isFiled() const { return filings > 0; }
    void setModified(Attribute attribute) { modified.set(static_cast<std::size_t>(attribute)); }
    int refile(const Box &new_box);
    void turn(Vector new_direction);
    bool takeWaypoint(Object *const &self);
    void dropPassed() const;
    int startSearch(Vector to, const Object *target);
    void warnIfNotMoving();
    void followPath();
    void spendLife();

    // What each step needs comes first, so that it is near together in memory.
    int id;
    bool is_active = true;
    bool is_visible = true;
    bool no_soft = false;
    bool avoid_collisions = false;
    bool follow_path = false;
    bool path_is_new = false; // Since the last waypoint was reached.
    Solidness solidness = HARD;
    Box box = Box::cell();
    Vector position{1, 1};
    Vector direction;
    float speed = 0;
    Vector acceleration;
    int life_span = 0;
    std::size_t solid_place = 0; // Among the solid objects, if it is one of them.
    int filings = 0;             // How often a scene graph has it: 0 if the world refused it.
    int registrations = 0;       // With all managers, those included that the game made directly.
    std::bitset<ATTRIBUTE_COUNT> modified = std::bitset<ATTRIBUTE_COUNT>().set();
    Animation animation;
    int altitude = 2;
    std::bitset<4> warned; // By Warning.
    std::string type = "(Undefined)";
    std::vector<std::string> event_name;
    Shape shape;
    std::unique_ptr<PathFind, PathFindDeleter> path_finder; // A search under way.
    // Passed waypoints stay at the front of the path until it is read, see dropPassed().
    mutable Path path;
    mutable std::size_t passed = 0;
};

} // namespace sv
