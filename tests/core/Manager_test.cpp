#include "core/Manager.h"

#include "core/Event.h"
#include "core/LogManager.h"
#include "support/EngineTest.h"
#include "world/Object.h"
#include "world/WorldManager.h"

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

class PlainEvent : public Event {
  public:
    explicit PlainEvent(const std::string &type) : Event(type) {}
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

/// Only objects that the world knows can be made inactive.
class StartedWorld {
  public:
    StartedWorld() { WorldManager::getInstance().startUp(); }
    ~StartedWorld() { WorldManager::getInstance().shutDown(); }
    StartedWorld(const StartedWorld &) = delete;
    StartedWorld &operator=(const StartedWorld &) = delete;
};

class Dispatch : public test::EngineTest {
  protected:
    /// Delivers an event; who was told, in order. Checks the count that onEvent returns.
    std::string send(const std::string &type = "t") {
        told.clear();
        const PlainEvent event(type);
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

    StartedWorld world; // Ends after the objects: it deletes those that it still has.
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
    EXPECT_EQ(send(), "ba");
    EXPECT_EQ(send("t2"), "c");
    EXPECT_EQ(send("t3"), "");
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
    struct Case {
        const char *name;
        std::function<void()> a_does;
        const char *told, *told_next;
    };
    const Case cases[] = {
        {"removes the other", [&] { drop(b); }, "ab", "a"},
        {"adds a third", [&] { add(c); }, "ab", "abc"},
        {"moves to the end",
         [&] {
             drop(a);
             add(a);
         },
         "ab", "ba"},
        {"silences the other", [&] { b.setActive(false); }, "a", "a"},
        {"registers for many types",
         [&] {
             for (int i = 0; i < 99; ++i)
                 add(a, "t" + std::to_string(i));
         },
         "ab", "ab"},
    };
    for (const Case &test_case : cases) {
        SCOPED_TRACE(test_case.name);
        add(a);
        add(b);
        a.action = test_case.a_does;
        EXPECT_EQ(send(), test_case.told);
        a.action = {};
        EXPECT_EQ(send(), test_case.told_next);

        for (Listener *listener : {&a, &b, &c}) {
            listener->setActive(true);
            while (drop(*listener) == 0) {
            }
        }
    }
}

TEST_F(Dispatch, a_hundred_types_and_no_more_and_no_word_about_it) {
    EXPECT_EQ(manager.registerInterest(nullptr, "t-none"), -1) << "takes no place";
    startLog(99);
    for (int i = 0; i < MAX_EVENTS; ++i)
        add(a, "t" + std::to_string(i));
    const std::string before = logText();
    EXPECT_EQ(manager.registerInterest(&b, "t100"), -1);
    EXPECT_EQ(logText(), before);
    add(b, "t99");
    EXPECT_EQ(send("t99"), "ab");

    EXPECT_EQ(drop(a, "t50"), 0);
    EXPECT_EQ(drop(a, "t50"), -1);
    add(b, "t100");
    EXPECT_EQ(send("t49") + send("t50") + send("t51") + send("t100"), "aab");
    EXPECT_EQ(manager.registerInterest(&b, "t50"), -1);
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
    EXPECT_EQ(logText(),
              "Manager(Switchboard)::onEvent(): Warning! Event type Switchboard is undefined.\n"
              "Manager(Switchboard)::registerInterest(): Event 'other' not valid for this Manager\n"
              "Manager(Switchboard)::registerInterest(): Event '' not valid for this Manager\n"
              "Manager(Switchboard)::onEvent(): Error! Event type other not valid.\n");

    LogManager::getInstance().setLogLevel(0);
    const std::size_t before = logLines().size();
    manager.onEvent(&undefined);
    send("other");
    manager.registerInterest(&a, "other");
    EXPECT_EQ(logLines().size(), before + 1) << "only the last is told at level 0";
}

TEST_F(Dispatch, starting_or_stopping_twice_is_a_warning) {
    startLog(1);
    manager.shutDown();
    EXPECT_EQ(manager.startUp(), 0);
    EXPECT_EQ(logText(), "Manager::shutDown(): Warning! Switchboard not started.\n");
    EXPECT_EQ(manager.startUp(), 0);
    EXPECT_EQ(logLines().back(), "Manager::startUp(): Warning! Switchboard already started.");
    add(a);
    manager.shutDown();
    EXPECT_FALSE(manager.isStarted());
    EXPECT_EQ(send(), "a") << "interests outlive a stop";
}

} // namespace

} // namespace sv
