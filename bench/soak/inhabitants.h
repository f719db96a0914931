/// The objects of the soak. All random numbers come from one generator, which is reseeded for each
/// round, so that all rounds are alike.
#pragma once

#include "selvane/core/Vector.h"
#include "selvane/world/Object.h"

#include <random>

namespace soak {

inline constexpr int world_width = 80;
inline constexpr int world_height = 24;

/// A random number from 0 to below `below`.
float chance(float below);
int choice(int below);
sv::Vector anyPlace();

/// Starts the generator again from the same seed.
void reseed();

/// What happened so far.
struct Tally {
    long born = 0;
    long died = 0;
    long collisions = 0;
    long paths_found = 0;
    long paths_missing = 0;
    long messages = 0;
    long connections = 0;
    long view_events = 0;
};
Tally &tally();

/// Flies for a while; a collision turns it or, one time in ten, deletes it.
class Flyer : public sv::Object {
  public:
    Flyer();
    ~Flyer() override { ++tally().died; }
    int eventHandler(const sv::Event *p_event) override;

  private:
    int collide();

    int steps_left;
};

/// Stands still as an obstacle.
class Wall : public sv::Object {
  public:
    explicit Wall(sv::Vector place);
};

/// Follows one path after the other, each to a random place.
class Walker : public sv::Object {
  public:
    Walker();
    int eventHandler(const sv::Event *p_event) override;

    /// Drops its path, goes back to where it began, and stays there.
    void goHome();

    void setOut() { is_at_home = false; }

  private:
    sv::Vector home;
    bool is_at_home = true;
};

} // namespace soak
