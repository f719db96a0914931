// What ends objects, and what stands still, in the game loop.

#include "selvane/core/EventAnimationEnd.h"
#include "selvane/core/EventKeyboard.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/resources/Sprite.h"
#include "selvane/testing/Session.h"
#include "selvane/world/spawn.h"

#include <gtest/gtest.h>

#include <memory>

namespace sv {
namespace {

/// Two frames, "a" and "b", of two steps each.
std::unique_ptr<Sprite> makeSprite() {
    auto sprite = std::make_unique<Sprite>(2);
    sprite->addFrame(Frame(1, 1, "a"));
    sprite->addFrame(Frame(1, 1, "b"));
    sprite->setSlowdown(2);
    return sprite;
}

class Actor : public Object {
  public:
    explicit Actor(std::string &new_events) : events(new_events) {
        setSolidness(SPECTRAL);
        registerInterest(KEYBOARD_EVENT);
    }
    ~Actor() override { events += "gone "; }

    int eventHandler(const Event *p_event) override {
        events += p_event->getType() + " ";
        return 1;
    }

  private:
    std::string &events;
};

struct Lifetime : testing::Test {
    Lifetime() {
        session.start();
        Animation pictures;
        pictures.setSprite(sprite.get());
        actor->setAnimation(pictures, true);
    }

    /// The screen of each of the next steps, '.' for an empty one.
    std::string play(int steps) {
        std::string seen;
        for (int i = 0; i < steps && session.play(); ++i)
            seen += session.screen().empty() ? "." : session.screen().substr(1);
        return seen;
    }

    WorldManager &world = WorldManager::getInstance();
    std::string events;
    std::unique_ptr<Sprite> sprite = makeSprite();
    Session session;
    Actor *actor = (session.start(), spawn<Actor>(events));
};

TEST_F(Lifetime, life_spans_count_updates) {
    EXPECT_EQ(actor->setLifeSpan(-2), -1);
    actor->setLifeSpan(3);
    EXPECT_EQ(play(4), " a a..");
    EXPECT_EQ(events, "gone ");
}

TEST_F(Lifetime, objects_live_until_their_animation_ends) {
    actor->setLifeSpan(UNTIL_ANIMATION_ENDS);
    actor->registerInterest(ANIMATION_END_EVENT);
    Actor *blank = spawn<Actor>(events);
    blank->setLifeSpan(UNTIL_ANIMATION_ENDS);
    EXPECT_EQ(play(6), " a a b b..");
    EXPECT_EQ(events, "gone sv-animation-end gone ");
}

TEST_F(Lifetime, retired_objects_get_no_more_events) {
    Actor *kept = spawn<Actor>(events);
    kept->setActive(false);
    spawn<Actor>(events)->setActive(false);
    ObjectList keep;
    keep.insert(kept);
    world.retireAll(keep);
    session.tapKey(Keyboard::A);
    EXPECT_EQ(play(2), "..");
    EXPECT_EQ(events, "gone gone ");
}

TEST_F(Lifetime, a_pause_stops_all_but_events) {
    actor->setVelocity({1, 0});
    EXPECT_EQ(play(2), "  a   a");
    world.setPaused();
    session.tapKey(Keyboard::A);
    EXPECT_EQ(play(2), "   b   b");
    EXPECT_EQ(events, "sv-keyboard sv-keyboard ");
    world.setPaused(false);
    EXPECT_EQ(play(3), "    b     b      a");
}

} // namespace
} // namespace sv
