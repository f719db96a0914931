/// What lives in the world of the soak. Everybody's chances come from one generator, which begins
/// anew with each round, so that all rounds are alike.
#pragma once

#include "selvane/core/Vector.h"
#include "selvane/world/Object.h"

#include <random>

namespace soak {

inline constexpr int world_width = 80;
inline constexpr int world_height = 24;

/// 0 to `below`, which is left out.
float chance(float below);
int choice(int below);
sv::Vector anyPlace();

/// Everybody's chances from the beginning.
void shuffleAnew();

/// How much happened so far.
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

/// Flies for a while, bounces off some of what it meets and dies of the rest.
class Flyer : public sv::Object {
  public:
    Flyer();
    ~Flyer() override { ++tally().died; }
    int eventHandler(const sv::Event *p_event) override;

  private:
    int collide();

    int steps_left;
};

/// Stands in the way.
class Wall : public sv::Object {
  public:
    explicit Wall(sv::Vector place);
};

/// Always on its way to somewhere, by a path that it has searched.
class Walker : public sv::Object {
  public:
    Walker();
    int eventHandler(const sv::Event *p_event) override;

    /// Drops what it is at, goes back to where it began, and stays there.
    void goHome();

    void setOut() { is_at_home = false; }

  private:
    sv::Vector home;
    bool is_at_home = true;
};

} // namespace soak
