// How events reach objects: Manager and ObjectList.

#include "selvane/core/Event.h"
#include "selvane/core/LogManager.h"
#include "support/WorldTest.h"

namespace sv {
namespace {

using test::Diary;
using test::Witness;

/// Delivers every type that begins with "t".
class Switchboard : public Manager {
  public:
    Switchboard() { setType("Switchboard"); }
    bool isValid(const std::string &event_type) const override {
        return event_type.starts_with('t');
    }
};

class Dispatch : public test::WorldTest {
  protected:
    /// Sends an event; the names of its receivers, in order. Checks the count that onEvent returns.
    std::string send(const std::string &type = "t") {
        diary.clear();
        Event event;
        event.setType(type);
        const int count = manager.onEvent(&event);
        EXPECT_EQ(count, static_cast<int>(diary.size()));
        std::string receivers;
        for (const std::string &entry : diary)
            receivers += entry[0];
        return receivers;
    }

    /// The receivers of this event, during which `a` acts, and of the next.
    std::string sendDuring(const std::function<void()> &action) {
        a.on_event = [&](const Event *) { action(); };
        const std::string now = send();
        a.on_event = {};
        return now + " " + send();
    }

    void add(Object &object, const std::string &type = "t") {
        EXPECT_EQ(manager.registerInterest(&object, type), 0);
    }

    int drop(Object &object, const std::string &type = "t") {
        return manager.unregisterInterest(&object, type);
    }

    Switchboard manager;
    Witness &a = *new Witness("a", diary);
    Witness &b = *new Witness("b", diary);
    Witness &c = *new Witness("c", diary);
};

TEST_F(Dispatch, active_objects_are_called_in_order) {
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

TEST_F(Dispatch, handlers_may_change_the_receivers) {
    add(a);
    add(b);
    EXPECT_EQ(sendDuring([&] { drop(b); }), "ab a");
    EXPECT_EQ(sendDuring([&] { add(c); }), "a ac");
    EXPECT_EQ(sendDuring([&] { c.setActive(false); }), "a a");
    c.setActive(true);
    EXPECT_EQ(sendDuring([&] { drop(a), add(a); }), "ac ca");
    const auto move_rows_in_memory = [&] {
        for (int i = 1; i < MAX_EVENTS; ++i)
            add(a, "t" + std::to_string(i));
    };
    EXPECT_EQ(sendDuring(move_rows_in_memory), "ca ca");
}

TEST_F(Dispatch, a_manager_delivers_a_hundred_types) {
    said();
    EXPECT_EQ(manager.registerInterest(nullptr, "t-none"), -1) << "takes no place";
    for (int i = 0; i < MAX_EVENTS; ++i)
        add(a, "t" + std::to_string(i));
    EXPECT_EQ(manager.registerInterest(&b, "t100"), -1);
    EXPECT_EQ(said(), "");
    add(b, "t99");
    EXPECT_EQ(send("t99"), "ab");

    EXPECT_EQ(drop(a, "t50"), 0);
    add(b, "t100");
    EXPECT_EQ(send("t49") + send("t50") + send("t51") + send("t100"), "aab");
}

TEST_F(Dispatch, unknown_types_and_objects_are_refused) {
    add(a);
    LogManager &log = LogManager::getInstance();
    const std::string invalid =
        "Manager(Switchboard)::registerInterest(): Event 'other' not valid for this Manager\n";
    for (const int level : {1, 0}) {
        log.setLogLevel(level);
        said();
        const Event undefined;
        EXPECT_EQ(manager.onEvent(&undefined), 0);
        EXPECT_EQ(send("other"), "");
        EXPECT_EQ(manager.registerInterest(&a, "other"), -1);
        EXPECT_EQ(manager.registerInterest(nullptr, "t"), -1);
        EXPECT_EQ(drop(a, "other"), -1);
        EXPECT_EQ(drop(b), -1);
        // The first line names the manager twice.
        const std::string at_level_1 =
            "Manager(Switchboard)::onEvent(): Warning! Event type Switchboard is undefined.\n"
            "Manager(Switchboard)::onEvent(): Error! Event type other not valid.\n";
        EXPECT_EQ(said(), (level == 1 ? at_level_1 : "") + invalid);
    }
}

TEST_F(Dispatch, second_starts_and_stops_are_warnings) {
    said();
    add(a);
    manager.shutDown();
    EXPECT_EQ(manager.startUp(), 0);
    EXPECT_EQ(manager.startUp(), 0);
    manager.shutDown();
    EXPECT_EQ(said(), "Manager::shutDown(): Warning! Switchboard not started.\n"
                      "Manager::startUp(): Warning! Switchboard already started.\n");
    EXPECT_EQ(send(), "a") << "interests outlive a stop";
}

TEST_F(Dispatch, lists_may_change_under_an_iterator) {
    ObjectList list;
    for (Object *p_o : {&a, &b, &a, &c})
        EXPECT_EQ(list.insert(p_o), 0);
    const ObjectList copy = list;
    ObjectListIterator it(&list);
    it.next();
    EXPECT_EQ(it.currentObject(), &b);
    EXPECT_EQ(list.remove(&a), 0);
    EXPECT_EQ(it.currentObject(), &a) << "only the first is removed, and later objects move up";
    EXPECT_EQ(copy.at(0), &a) << "a copy is a list of its own";
    EXPECT_EQ((list + copy).getCount(), 7);
    list.clear();
    EXPECT_TRUE(it.isDone());
    EXPECT_EQ(it.currentObject(), nullptr);
    EXPECT_EQ(list.remove(&a), -1);
    EXPECT_EQ(list.insert(nullptr), -1);
    it.next();
    list = copy;
    EXPECT_EQ(it.currentObject(), &b) << "an iterator that is done does not move on";
    for (it.first(); !it.isDone(); it.next())
        if (list.getCount() < 8)
            list.insert(it.currentObject());
    EXPECT_EQ(list.at(7), &c);
    EXPECT_EQ(list.at(8), nullptr);
    EXPECT_EQ(list.at(-1), nullptr);
}

} // namespace
} // namespace sv
