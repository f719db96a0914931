#include "selvane/world/Object.h"

#include "selvane/core/Event.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/ObjectWatch.h"
#include "selvane/core/text.h"
#include "selvane/input/InputManager.h"
#include "selvane/loop/GameManager.h"
#include "selvane/network/NetworkManager.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/world/SceneGraph.h"
#include "selvane/world/WorldManager.h"

#include <algorithm>
#include <limits>

namespace sv {

namespace {

int next_id = 1;

int takeNextId() {
    const int id = next_id;
    if (next_id < std::numeric_limits<int>::max())
        ++next_id;
    return id;
}

SceneGraph &sceneGraph() {
    return WorldManager::getInstance().getSceneGraph();
}

/// The manager that delivers events of that type.
Manager &managerOf(const std::string &event_type) {
    if (event_type == KEYBOARD_EVENT || event_type == MOUSE_EVENT || event_type == TEXT_EVENT)
        return InputManager::getInstance();
    if (event_type == STEP_EVENT)
        return GameManager::getInstance();
    if (event_type == NETWORK_EVENT || event_type == KEYBOARD_NETWORK_EVENT ||
        event_type == MOUSE_NETWORK_EVENT || event_type == CUSTOM_NETWORK_EVENT)
        return NetworkManager::getInstance();
    return WorldManager::getInstance();
}

/// Only the engine's types begin with "sv-", so another one that does is a misspelling.
void warnIfMisspelt(const std::string &event_type) {
    if (event_type.starts_with("sv-") && !isEngineEvent(event_type))
        logLine("Object::registerInterest(): Warning! Event '%s' is none of the engine's.",
                printable(event_type).c_str());
}

} // namespace

void Object::restartIds() {
    next_id = 1;
}

Object::Object() : id(takeNextId()) {
    shape.setType(UNDEFINED_SHAPE);
    WorldManager::getInstance().objectCreated(this);
}

Object::~Object() {
    while (!event_name.empty()) {
        const std::string last = event_name.back();
        if (unregisterInterest(last) != 0)
            event_name.pop_back();
    }
    dropPathFind();
    WorldManager::getInstance().objectDestroyed(this);
    if (registrations > 0)
        Manager::forgetEverywhere(this);
    ObjectWatch::forget(this);
}

int Object::draw() {
    return drawAt(position);
}

int Object::drawAt(Vector place) {
    const int result = animation.draw(place);
    if (shape.getType() != UNDEFINED_SHAPE)
        shape.draw(place);
    return result;
}

bool Object::isModified() const {
    return modified.any() || animation.isModified();
}

bool Object::isModified(Attribute attribute) const {
    return modified.test(static_cast<std::size_t>(attribute)) ||
           (attribute == Attribute::ANIMATION && animation.isModified());
}

bool Object::isModified(int index) const {
    return index >= 0 && index < ATTRIBUTE_COUNT && isModified(static_cast<Attribute>(index));
}

void Object::setId(int new_id) {
    if (new_id == id)
        return;
    id = new_id;
    if (new_id >= next_id) {
        next_id = new_id;
        takeNextId();
    }
    setModified(Attribute::ID);
}

void Object::setType(const std::string &new_type) {
    // Stored even if the scene graph refuses: an inactive object is not filed by its type and must
    // be able to change it.
    if (isFiled())
        sceneGraph().updateType(this, new_type);
    type = new_type;
    setModified(Attribute::TYPE);
}

int Object::setActive(bool new_is_active) {
    if (new_is_active == is_active)
        return 0;
    if (isFiled() && sceneGraph().updateActive(this, new_is_active) != 0)
        return -1;
    is_active = new_is_active;
    setModified(Attribute::ACTIVE);
    return 0;
}

int Object::setVisible(bool new_is_visible) {
    if (new_is_visible == is_visible)
        return 0;
    if (isFiled() && sceneGraph().updateVisible(this, new_is_visible) != 0)
        return -1;
    is_visible = new_is_visible;
    setModified(Attribute::VISIBLE);
    return 0;
}

int Object::setAltitude(int new_altitude) {
    if (new_altitude == altitude)
        return 0;
    if (new_altitude < 0 || new_altitude > MAX_ALTITUDE)
        return logFailure("Object::setAltitude(): Altitude %d not in range [%d,%d].  Ignored.",
                          new_altitude, 0, MAX_ALTITUDE);
    if (isFiled() && sceneGraph().updateAltitude(this, new_altitude) != 0)
        return -1;
    altitude = new_altitude;
    setModified(Attribute::ALTITUDE);
    return 0;
}

int Object::setSolidness(Solidness new_solidness) {
    if (new_solidness == solidness)
        return 0;
    if (new_solidness < HARD || new_solidness > SPECTRAL)
        return logFailure("Object::setSolidness(): Solidness %d not one of HARD, SOFT or SPECTRAL.",
                          int{new_solidness});
    if (isFiled() && sceneGraph().updateSolidness(this, new_solidness) != 0)
        return -1;
    solidness = new_solidness;
    setModified(Attribute::SOLIDNESS);
    return 0;
}

int Object::setBox(const Box &new_box) {
    return new_box == box ? 0 : refile(new_box);
}

/// Inserts the object again with its new box, since a scene graph may file it by its extent. An
/// object that the world has refused stays outside.
int Object::refile(const Box &new_box) {
    setModified(Attribute::BOX);
    if (!isFiled()) {
        box = new_box;
        return 0;
    }
    sceneGraph().removeObject(this);
    box = new_box;
    return sceneGraph().insertObject(this);
}

int Object::setPosition(Vector new_position) {
    if (new_position == position)
        return 0;
    if (isRefused("position", new_position))
        return -1;
    sceneGraph().updatePosition(this, new_position);
    position = new_position;
    setModified(Attribute::POSITION);
    return 0;
}

/// NaN and infinity spread to every number computed with them.
bool Object::isRefused(const char *name, Vector value) {
    if (isFinite(value))
        return false;
    if (isFirst(Warning::NOT_FINITE))
        logFailure("Object: Warning! Object %d: %s (%g, %g) refused.", id, name, double{value.x},
                   double{value.y});
    return true;
}

bool Object::isFirst(Warning warning) {
    const auto flag = static_cast<std::size_t>(warning);
    const bool is_first = !warned.test(flag);
    warned.set(flag);
    return is_first;
}

void Object::setDirection(Vector new_direction) {
    if (isRefused("direction", new_direction))
        return;
    direction = new_direction;
    setModified(Attribute::DIRECTION);
}

void Object::setSpeed(float new_speed) {
    if (isRefused("speed", {new_speed, 0}))
        return;
    speed = new_speed;
    setModified(Attribute::SPEED);
}

void Object::setVelocity(Vector velocity) {
    const float new_speed = length(velocity);
    if (isRefused("velocity", velocity) || isRefused("speed", {new_speed, 0}))
        return;
    setSpeed(new_speed);
    setDirection(normalized(velocity));
}

void Object::setAcceleration(Vector new_acceleration) {
    if (isRefused("acceleration", new_acceleration))
        return;
    acceleration = new_acceleration;
    setModified(Attribute::ACCELERATION);
}

void Object::setNoSoft(bool new_no_soft) {
    no_soft = new_no_soft;
    setModified(Attribute::NO_SOFT);
}

void Object::setAvoidCollisions(bool new_avoid_collisions) {
    avoid_collisions = new_avoid_collisions;
    setModified(Attribute::AVOID_COLLISIONS);
}

void Object::setAnimation(const Animation &new_animation, bool set_box) {
    animation.setSprite(new_animation.getSprite());
    animation.setName(new_animation.getName());
    animation.setIndex(new_animation.getIndex());
    animation.setSlowdownCount(new_animation.getSlowdownCount());
    setModified(Attribute::ANIMATION);
    if (!set_box)
        return;
    box = animation.getBox();
    sceneGraph().updatePosition(this, position);
    setModified(Attribute::BOX);
}

int Object::setSprite(const std::string &label) {
    Sprite *sprite = ResourceManager::getInstance().getSprite(label);
    if (!sprite)
        return logFailure("Object::setSprite(): Warning! Sprite '%s' not found", label.c_str());
    animation.setSprite(sprite);
    if (animation.getBox() != box)
        refile(animation.getBox());
    return 0;
}

void Object::setShape(const Shape &new_shape) {
    shape = new_shape;
    setModified(Attribute::SHAPE);
}

int Object::registerInterest(const std::string &event_type) {
    if (event_name.size() >= MAX_OBJ_EVENTS) {
        if (isFirst(Warning::TOO_MANY_EVENTS))
            logFailure("Object::registerInterest(): maximum (%d) reached, cannot register for "
                       "event '%s'",
                       MAX_OBJ_EVENTS, printable(event_type).c_str());
        return -1;
    }
    const bool is_registered =
        std::find(event_name.begin(), event_name.end(), event_type) != event_name.end();
    if (managerOf(event_type).registerInterest(this, event_type) != 0)
        return -1;
    warnIfMisspelt(event_type);
    event_name.push_back(event_type);
    setModified(Attribute::EVENTS);
    if (is_registered && isFirst(Warning::REGISTERED_TWICE))
        logLine(
            "Object::registerInterest(): Warning! Object %d has registered for '%s' before, and is "
            "told of it once more each time.",
            id, printable(event_type).c_str());
    return 0;
}

int Object::unregisterInterest(const std::string &event_type) {
    const auto found = std::find(event_name.begin(), event_name.end(), event_type);
    if (found == event_name.end())
        return logFailure("Object::unregisterInterest(): event '%s' not previously registered",
                          printable(event_type).c_str());
    if (managerOf(event_type).unregisterInterest(this, event_type) != 0)
        return -1;
    event_name.erase(found);
    setModified(Attribute::EVENTS);
    return 0;
}

} // namespace sv
