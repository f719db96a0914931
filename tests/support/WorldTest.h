/// A started world without window or game loop, and objects that say what reaches them.
#pragma once

#include "selvane/core/Event.h"
#include "selvane/core/EventCollision.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"
#include "support/EngineTest.h"
#include "support/printing.h"

#include <functional>
#include <string>
#include <vector>

namespace test {

/// What happened, in order: events as "name: type", deletions as "name: gone".
using Diary = std::vector<std::string>;

class WorldTest : public EngineTest {
  protected:
    WorldTest() : world(sv::WorldManager::getInstance()) {
        startLog(10);
        EXPECT_EQ(world.startUp(), 0);
        world.setBoundary({{0, 0}, 80, 24});
        world.setView({{0, 0}, 80, 24});
    }

    ~WorldTest() override { world.shutDown(); }

    /// Sends an event of that type to the objects that registered for it; how often one was called.
    int send(const std::string &type) {
        sv::Event event;
        event.setType(type);
        return world.onEvent(&event);
    }

    sv::WorldManager &world;
    Diary diary; // Outlives the objects, which the world deletes with the test.
};

class Witness : public sv::Object {
  public:
    Witness(const std::string &new_name, Diary &new_diary) : name(new_name), diary(new_diary) {}

    ~Witness() override {
        if (on_death)
            on_death();
        diary.push_back(name + ": gone");
    }

    int eventHandler(const sv::Event *p_event) override {
        std::string entry = name + ": " + p_event->getType();
        if (const auto *p_collision = dynamic_cast<const sv::EventCollision *>(p_event))
            entry += p_collision->getObject1() == this ? " into" : " by";
        diary.push_back(entry);
        if (on_event)
            on_event(p_event);
        return 1;
    }

    int draw() override {
        diary.push_back(name + ": drawn");
        return 0;
    }

    std::function<void(const sv::Event *)> on_event;
    std::function<void()> on_death;

  private:
    std::string name;
    Diary &diary;
};

} // namespace test
