#include "selvane/core/Manager.h"

#include "selvane/core/Event.h"
#include "selvane/core/LogManager.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"
#include "support/EngineTest.h"

#include <functional>

namespace sv {
namespace {

/// Delivers every type that begins with "t".
class Switchboard : public Manager {
  public:
    Switchboard() { setType("Switchboard"); }
    bool isValid(const std::string &event_type) const override {
        return event_type.starts_with('t');
    }
};

/// Adds its letter to what was told, and then acts.
class Listener : public Object {
  public:
    Listener(char new_letter, std::string &new_told) : letter(new_letter), told(new_told) {}

    int eventHandler(const Event * /*p_event*/) override {
        told += letter;
        if (action)
            action();
        return 0; // Nobody asks.
    }

    std::function<void()> action;

  private:
    char letter;
    std::string &told;
};

class Dispatch : public test::EngineTest {
  protected:
    /// Delivers an event; who was told, in order. Checks the count that onEvent returns.
    std::string send(const std::string &type = "t") {
        told.clear();
        Event event;
        event.setType(type);
        const int count = manager.onEvent(&event);
        EXPECT_EQ(count, static_cast<int>(told.size()));
        return told;
    }

    void add(Object &object, const std::string &type = "t") {
        EXPECT_EQ(manager.registerInterest(&object, type), 0);
    }

    int drop(Object &object, const std::string &type = "t") {
        return manager.unregisterInterest(&object, type);
    }

    // Before the objects: only those that the world knows can be made inactive.
    const int world_start = WorldManager::getInstance().startUp();
    std::string told;
    Switchboard manager;
    Listener a{'a', told};
    Listener b{'b', told};
    Listener c{'c', told};
};

TEST_F(Dispatch, tells_the_active_ones_in_the_order_of_registration) {
    add(b);
    add(a);
    add(c, "t2");
    EXPECT_EQ(send() + send("t2") + send("t3"), "bac");
    b.setActive(false);
    EXPECT_EQ(send(), "a");
    b.setActive(true);
    add(b);
    EXPECT_EQ(send(), "bab") << "registered twice";
    EXPECT_EQ(drop(b), 0);
    EXPECT_EQ(send(), "ab");
    EXPECT_EQ(drop(b), 0);
    EXPECT_EQ(drop(b), -1);
}

TEST_F(Dispatch, a_handler_may_change_who_is_told_next_time) {
    const auto handle_with = [&](const std::function<void()> &action) {
        a.action = action;
        std::string now_and_next = send();
        a.action = {};
        return (now_and_next += " ") += send();
    };
    add(a);
    add(b);
    EXPECT_EQ(handle_with([&] { drop(b); }), "ab a");
    EXPECT_EQ(handle_with([&] { add(c); }), "a ac");
    EXPECT_EQ(handle_with([&] { c.setActive(false); }), "a a");
    c.setActive(true);
    EXPECT_EQ(handle_with([&] {
                  drop(a);
                  add(a);
              }),
              "ac ca");
    EXPECT_EQ(handle_with([&] {
                  for (int i = 1; i < MAX_EVENTS; ++i)
                      add(a, "t" + std::to_string(i)); // The rows move in memory.
              }),
              "ca ca");
}

TEST_F(Dispatch, a_hundred_types_and_no_more_and_no_word_about_it) {
    startLog(99);
    EXPECT_EQ(manager.registerInterest(nullptr, "t-none"), -1) << "takes no place";
    for (int i = 0; i < MAX_EVENTS; ++i)
        add(a, "t" + std::to_string(i));
    EXPECT_EQ(manager.registerInterest(&b, "t100"), -1);
    EXPECT_EQ(logText(), "");
    add(b, "t99");
    EXPECT_EQ(send("t99"), "ab");

    EXPECT_EQ(drop(a, "t50"), 0);
    add(b, "t100");
    EXPECT_EQ(send("t49") + send("t50") + send("t51") + send("t100"), "aab");
}

TEST_F(Dispatch, refuses_what_it_does_not_deliver) {
    add(a);
    startLog(1);
    const Event undefined;
    EXPECT_EQ(manager.onEvent(&undefined), 0);
    EXPECT_EQ(manager.registerInterest(&a, "other"), -1);
    EXPECT_EQ(manager.registerInterest(&a, ""), -1);
    EXPECT_EQ(manager.registerInterest(nullptr, "t"), -1);
    EXPECT_EQ(drop(a, "other"), -1);
    EXPECT_EQ(drop(b), -1);
    EXPECT_EQ(send("other"), "");
    // The first line names the manager twice.
    EXPECT_EQ(said(),
              "Manager(Switchboard)::onEvent(): Warning! Event type Switchboard is undefined.\n"
              "Manager(Switchboard)::registerInterest(): Event 'other' not valid for this Manager\n"
              "Manager(Switchboard)::registerInterest(): Event '' not valid for this Manager\n"
              "Manager(Switchboard)::onEvent(): Error! Event type other not valid.\n");

    LogManager::getInstance().setLogLevel(0);
    manager.onEvent(&undefined);
    send("other");
    manager.registerInterest(&a, "other");
    EXPECT_EQ(
        said(),
        "Manager(Switchboard)::registerInterest(): Event 'other' not valid for this Manager\n");
}

TEST_F(Dispatch, starting_or_stopping_twice_is_a_warning) {
    startLog(1);
    add(a);
    manager.shutDown();
    EXPECT_EQ(manager.startUp(), 0);
    EXPECT_EQ(manager.startUp(), 0);
    manager.shutDown();
    EXPECT_EQ(logText(), "Manager::shutDown(): Warning! Switchboard not started.\n"
                         "Manager::startUp(): Warning! Switchboard already started.\n");
    EXPECT_EQ(send(), "a") << "interests outlive a stop";
}

} // namespace
} // namespace sv
