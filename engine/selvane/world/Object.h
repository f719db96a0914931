/// The base of everything that lives in a game: it stands somewhere in the world, moves, collides,
/// shows a sprite or a figure, and receives events.
///
/// An object files itself with the world manager when it is made and takes itself out when it is
/// destroyed. Game code makes one with `new` and never deletes it: the world manager does, after
/// WorldManager::markForDelete() or at its shut-down. One that is a variable or a plain member
/// lives in the world like the others and is taken out instead; one in a std::unique_ptr would be
/// deleted twice. Game-loop thread only.
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
/// other. A spectral one meets nothing.
enum Solidness : int { HARD = 0, SOFT = 1, SPECTRAL = 2 };

/// What serialize() can write; each has a flag that says whether it changed since it last was.
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

/// Deletes a search for a path; defined where searches are.
struct PathFindDeleter {
    void operator()(PathFind *p_path_find) const;
};

class Object {
  public:
    virtual ~Object();

    /// In cells of the world. Moves the object and nothing else: no collision, no "sv-out", no view
    /// that follows; WorldManager::moveObject() has those. 0, or -1 for a position that is not
    /// finite; here and in the other setters, the object then keeps what it had, and the first time
    /// the log says so.
    virtual int setPosition(Vector new_position);

    /// Receives an event, which is gone when the handler has returned; 1 if it was handled, 0 if
    /// it was ignored. The base takes the path of an "sv-path" event and follows it.
    virtual int eventHandler(const Event *p_event);

    /// Draws the sprite and then the figure, if it has one. 0, or -1 if the display refuses.
    virtual int draw();

    /// The attributes that `attributes` selects (see isAttributeWanted), as "key:value," items;
    /// what is written counts as unmodified from then on. The names are those of Attribute, each
    /// with a comma behind it.
    virtual std::string serialize(const std::string &attributes = "");

    /// Takes over every attribute that the text has; the others stay. Values that are no sense are
    /// refused as the setters refuse them. Returns 0.
    virtual int deserialize(const std::string &text);

    /// Whether any attribute changed since it was last written. Everything of a new object has.
    virtual bool isModified() const;
    virtual bool isModified(Attribute attribute) const;

    /// By the number of an attribute, 0 to 17 in the order of Attribute; false for any other.
    bool isModified(int index) const;

    /// An active, visible, hard object with the next free id at (1, 1), without sprite and figure.
    /// One that only listens or counts stands in everybody's way there, unless it is made SPECTRAL.
    Object();
    Object(const Object &) = delete;
    Object &operator=(const Object &) = delete;

    // What C++ has for `new`, except that the world learns which objects it may delete: not those
    // of a class with an operator new of its own, or of `::new`. An array of objects does not
    // compile.
    static void *operator new(std::size_t size);
    static void *operator new(std::size_t size, const std::nothrow_t &) noexcept;
    static void *operator new(std::size_t size, std::align_val_t alignment);
    static void *operator new(std::size_t size, std::align_val_t alignment,
                              const std::nothrow_t &) noexcept;
    static void *operator new(std::size_t /*size*/, void *place) noexcept { return place; }
    static void *operator new[](std::size_t size) = delete;
    static void operator delete(void *p_block) noexcept;
    static void operator delete(void *p_block, const std::nothrow_t &) noexcept;
    static void operator delete(void *p_block, std::align_val_t alignment) noexcept;
    static void operator delete(void *p_block, std::align_val_t alignment,
                                const std::nothrow_t &) noexcept;
    static void operator delete(void * /*p_block*/, void * /*place*/) noexcept {}

    /// From 1 in the order of making. Objects made after this one get ids above `new_id`.
    void setId(int new_id);
    int getId() const { return id; }

    void setType(const std::string &new_type);
    std::string getType() const { return type; }

    // The setters below change nothing if the value is the one it has. They answer 0, or -1 if the
    // value is out of range or the scene graph refuses; the object then keeps what it had.

    /// An inactive object is neither moved, collided with nor drawn, and gets no events but the
    /// "sv-path" of a search that it has begun. One that becomes inactive while a step moves it
    /// still ends that move, and one that is marked for deletion lives, moves and collides on until
    /// the step ends: to leave the stage at once, do both.
    int setActive(bool new_is_active);
    bool isActive() const { return is_active; }

    int setVisible(bool new_is_visible);
    bool isVisible() const { return is_visible; }

    /// 0 to MAX_ALTITUDE, default 2; higher is drawn later. An active object that is invisible
    /// cannot change it.
    int setAltitude(int new_altitude);
    int getAltitude() const { return altitude; }

    int setSolidness(Solidness new_solidness);
    Solidness getSolidness() const { return solidness; }
    bool isSolid() const { return solidness == HARD || solidness == SOFT; }

    /// Relative to the position. Default: corner (-0.5, -0.5), 0.99 by 0.99, just short of touching
    /// the neighbouring cells. A new box brings the object to the front of its altitude: it is
    /// drawn after the others there.
    int setBox(const Box &new_box);
    Box getBox() const { return box; }

    // From here on setters store what they are given, if its numbers are finite.

    Vector getPosition() const { return position; }

    /// The way it moves, of length 1 or 0.
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

    /// Where the next step takes it if nothing is in the way.
    Vector predictPosition() const { return position + getVelocity(); }

    /// Whether soft objects stop it. Default: they do not.
    void setNoSoft(bool new_no_soft);
    bool getNoSoft() const { return no_soft; }

    /// Whether a hard object slides along hard obstacles. Default: it stops. One that slides, or
    /// stands because there is no way to slide, is told of no collision with a hard object, and nor
    /// is that object.
    void setAvoidCollisions(bool new_avoid_collisions);
    bool getAvoidCollisions() const { return avoid_collisions; }

    /// Takes over sprite, frame and step count. With `set_box` the object gets the animation's box
    /// too, without the scene graph hearing of it.
    void setAnimation(const Animation &new_animation, bool set_box);
    Animation getAnimation() const { return animation; }

    /// Shows the sprite that is loaded under that label and takes its box. 0, or -1 if there is
    /// none.
    int setSprite(const std::string &label);

    void setShape(const Shape &new_shape);
    Shape getShape() const { return shape; }

    void setPath(const Path &new_path);

    /// What is still ahead: in the middle of a setPosition() that takes it to a waypoint, that
    /// waypoint is the first. Good until the object takes its next step.
    const Path &getPath() const;

    /// Whether it walks its path, waypoint by waypoint, with its speed. Turns it towards the first
    /// waypoint, if there is one.
    void setFollowPath(bool new_follow_path);
    bool getFollowPath() const { return follow_path; }

    /// Asks for a path from the cell nearest to where it stands to the one nearest to `to`, or to
    /// the first cell in which it touches the target. Steps later an "sv-path" event tells how that
    /// ended; the base follows the path that was found, from its first cell on, with its speed. It
    /// brushes the corners of what is hard: a hard object that does not avoid collisions stops
    /// there.
    ///
    /// 0, or -1 with a line in the log: one of the two is outside the world, or, at level 5 since
    /// many ask in every step, the object is searching already or stands in that cell already. A
    /// target may be deleted meanwhile; the path then leads to where it was.
    int findPath(Vector to);
    int findPath(const Object *p_target);

    /// Gives up its search for a path, if there is one: no event will come.
    void dropPathFind();

    /// Asks for events of that type, from the manager that delivers them. One that asks twice is
    /// told twice, and the log says so once. 0, or -1 if that manager does not, or if it has
    /// MAX_OBJ_EVENTS interests already. A type of the game's own should not begin with "sv-": it
    /// is warned of, and taken.
    int registerInterest(const std::string &event_type);

    /// 0, or -1 if it was not registered.
    int unregisterInterest(const std::string &event_type);

    /// The types it registered for, in that order.
    const std::vector<std::string> &getInterests() const { return event_name; }

    // Called by the world manager.

    /// Whether the world may delete it.
    bool isMadeByNew() const;

    // Once a step, after the object's move.

    /// Turns it towards its next waypoint, past those that it has reached.
    void stepPath();

    /// Adds the acceleration to the velocity.
    void stepAcceleration();

  private:
    friend class Manager;    // Counts its registrations.
    friend class SceneGraph; // Counts its filings.

    /// What the log says once for each object, since it may be true in every step.
    enum class Notice { NO_SPEED, NOT_FINITE, TOLD_TWICE, TOO_MANY_EVENTS };

    bool isNews(Notice notice);
    bool isRefused(const char *name, Vector value);
    bool isFiled() const { return filings > 0; }
    void setModified(Attribute attribute) { modified.set(static_cast<std::size_t>(attribute)); }
    int refile(const Box &new_box);
    void turn(Vector new_direction);
    bool takeWaypoint(Object *const &p_me);
    void dropPassed() const;
    bool isSearching() const;
    int startSearch(Vector to, const Object *p_target);
    void sayIfStill();

    int id;
    std::string type = "(Undefined)";
    bool is_active = true;
    bool is_visible = true;
    Box box{{-0.5F, -0.5F}, 0.99F, 0.99F};
    Vector position{1, 1};
    Vector direction;
    float speed = 0;
    Vector acceleration;
    int altitude = 2;
    Solidness solidness = HARD;
    Animation animation;
    bool no_soft = false;
    std::vector<std::string> event_name;
    std::bitset<ATTRIBUTE_COUNT> modified = std::bitset<ATTRIBUTE_COUNT>().set();
    Shape shape;
    std::unique_ptr<PathFind, PathFindDeleter> path_finder; // A search under way.
    // Passed waypoints stay at the front of the path until somebody looks, see dropPassed().
    mutable Path path;
    mutable std::size_t passed = 0;
    bool path_is_new = false; // Since the last waypoint was reached.
    bool follow_path = false;
    bool avoid_collisions = false;
    std::bitset<4> said;   // By Notice.
    int registrations = 0; // With all managers, those included that the game made directly.
    int filings = 0;       // How often a scene graph has it: 0 if the world refused it.
};

} // namespace sv
