#include "inhabitants.h"

#include "selvane/core/Event.h"
#include "selvane/core/EventPath.h"
#include "selvane/world/WorldManager.h"

#include <cmath>

namespace soak {

namespace {

std::mt19937 generator;

void remove(sv::Object *object) {
    sv::WorldManager::getInstance().markForDelete(object);
}

} // namespace

float chance(float below) {
    return std::uniform_real_distribution<float>(0, below)(generator);
}

int choice(int below) {
    return std::uniform_int_distribution<int>(0, below - 1)(generator);
}

sv::Vector anyPlace() {
    return {std::floor(chance(world_width)), std::floor(chance(world_height))};
}

void reseed() {
    generator.seed(1);
}

Tally &tally() {
    static Tally instance;
    return instance;
}

Flyer::Flyer() : steps_left(20 + choice(100)) {
    ++tally().born;
    setType("Flyer");
    setSolidness(static_cast<sv::Solidness>(choice(3)));
    setAltitude(choice(sv::MAX_ALTITUDE + 1));
    setPosition(anyPlace());
    setVelocity({chance(2) - 1, chance(2) - 1});
    setNoSoft(choice(2) == 0);
    setAvoidCollisions(choice(2) == 0);
    if (choice(2) == 0)
        setSprite("flyer");
    registerInterest(sv::STEP_EVENT);
    if (choice(4) == 0)
        registerInterest("alarm");
}

int Flyer::eventHandler(const sv::Event *p_event) {
    const std::string event = p_event->getType();
    if (event == sv::COLLISION_EVENT)
        return collide();
    if (event == sv::OUT_EVENT || (event == sv::STEP_EVENT && --steps_left <= 0))
        remove(this);
    else if (event == "alarm")
        setVelocity(getVelocity() * -1.0F);
    return 1;
}

int Flyer::collide() {
    ++tally().collisions;
    if (choice(10) == 0)
        remove(this);
    else
        setVelocity({chance(2) - 1, chance(2) - 1});
    return 1;
}

Wall::Wall(sv::Vector place) {
    setType("Wall");
    setPosition(place);
}

Walker::Walker() : home(anyPlace()) {
    setType("Walker");
    setSolidness(sv::SOFT);
    setSpeed(1);
    setPosition(home);
    registerInterest(sv::STEP_EVENT);
}

int Walker::eventHandler(const sv::Event *p_event) {
    if (p_event->getType() == sv::STEP_EVENT && !is_at_home && !getFollowPath() && choice(5) == 0) {
        const sv::Vector to = anyPlace();
        if (sv::distance(to, getPosition()) > 2)
            findPath(to);
    }
    if (const auto *path_event = sv::eventCast<sv::EventPath>(p_event))
        ++(path_event->getStatus() == sv::PATH_FOUND ? tally().paths_found : tally().paths_missing);
    return Object::eventHandler(p_event);
}

void Walker::goHome() {
    dropPathFind();
    setPath({});
    setFollowPath(false);
    setDirection({0, 0});
    setPosition(home);
    is_at_home = true;
}

} // namespace soak
