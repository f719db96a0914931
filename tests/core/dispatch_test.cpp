// How events reach objects: Manager and ObjectList.

#include "selvane/core/Event.h"
#include "selvane/core/LogManager.h"
#include "support/WorldTest.h"

#include <utility>

namespace sv {
namespace {

using test::Diary;
using test::Witness;

struct Dispatch : test::WorldTest {
    /// Sends an event; the names of its receivers, in order. Checks the count that onEvent returns.
    std::string receivers(const std::string &type = "t") {
        diary.clear();
        const int count = send(type);
        EXPECT_EQ(count, static_cast<int>(diary.size()));
        std::string names;
        for (const std::string &entry : diary)
            names += entry[0];
        return names;
    }

    /// The receivers of this event, during which `a` acts, and of the next.
    std::string receiversDuring(const std::function<void()> &action) {
        a.on_event = [&](const Event *) { action(); };
        const std::string now = receivers();
        a.on_event = {};
        return now + " " + receivers();
    }

    void add(Object &object, const std::string &type = "t") {
        EXPECT_EQ(world.registerInterest(&object, type), 0);
    }

    int drop(Object &object, const std::string &type = "t") {
        return world.unregisterInterest(&object, type);
    }

    Witness &a = *new Witness("a", diary);
    Witness &b = *new Witness("b", diary);
    Witness &c = *new Witness("c", diary);
};

TEST_F(Dispatch, active_objects_are_called_in_order) {
    add(b);
    add(a);
    add(c, "t2");
    EXPECT_EQ(receivers() + receivers("t2") + receivers("t3"), "bac");
    b.setActive(false);
    EXPECT_EQ(receivers(), "a");
    b.setActive(true);
    add(b);
    EXPECT_EQ(receivers(), "bab") << "registered twice";
    EXPECT_EQ(drop(b), 0);
    EXPECT_EQ(receivers(), "ab");
    EXPECT_EQ(drop(b), 0);
    EXPECT_EQ(drop(b), -1);
}

TEST_F(Dispatch, handlers_may_change_the_receivers) {
    add(a);
    add(c, "t2");
    EXPECT_EQ(receiversDuring([&] { drop(a), add(a); }), "aa a") << "behind t2, as a new type";
    add(b);
    EXPECT_EQ(receiversDuring([&] { drop(b); }), "ab a");
    EXPECT_EQ(receiversDuring([&] { add(c); }), "a ac");
    EXPECT_EQ(receiversDuring([&] { c.setActive(false); }), "a a");
    c.setActive(true);
    EXPECT_EQ(receiversDuring([&] { drop(a), add(a); }), "ac ca");
    const auto move_rows_in_memory = [&] {
        for (int i = 1; i < MAX_EVENTS; ++i)
            add(a, "t" + std::to_string(i));
    };
    EXPECT_EQ(receiversDuring(move_rows_in_memory), "ca ca");
}

TEST_F(Dispatch, nested_events_reach_those_registered_before) {
    auto *p_doomed = new Witness("d", diary);
    for (Witness *p_o : {&a, &b, &c, p_doomed})
        add(*p_o);
    bool is_first = true;
    a.on_event = [&](const Event *) {
        if (std::exchange(is_first, false))
            send("t");
    };
    b.on_event = [&](const Event *) {
        drop(c);
        delete std::exchange(p_doomed, nullptr);
    };
    send("t");
    EXPECT_EQ(diary, (Diary{"a: t", "a: t", "b: t", "d: gone", "c: t", "b: t", "c: t"}));
    EXPECT_EQ(receivers(), "ab");
}

TEST_F(Dispatch, a_manager_delivers_a_hundred_types) {
    said();
    EXPECT_EQ(world.registerInterest(nullptr, "t-none"), -1) << "takes no place";
    for (int i = 0; i < MAX_EVENTS; ++i)
        add(a, "t" + std::to_string(i));
    EXPECT_EQ(world.registerInterest(&b, "t100"), -1);
    EXPECT_EQ(said(), "");
    add(b, "t99");
    EXPECT_EQ(receivers("t99"), "ab");

    EXPECT_EQ(drop(a, "t50"), 0);
    add(b, "t100");
    EXPECT_EQ(receivers("t49") + receivers("t50") + receivers("t51") + receivers("t100"), "aab");
}

TEST_F(Dispatch, unknown_types_and_objects_are_refused) {
    add(a);
    const std::string invalid = "WorldManager::isValid(): WorldManager does not handle sv-step\n";
    for (const int level : {1, 0}) {
        LogManager::getInstance().setLogLevel(level);
        said();
        EXPECT_EQ(receivers("sv-undefined"), "");
        EXPECT_EQ(receivers("sv-step"), "");
        EXPECT_EQ(world.registerInterest(&a, "sv-step"), -1);
        EXPECT_EQ(world.registerInterest(nullptr, "t"), -1);
        EXPECT_EQ(drop(a, "other"), -1);
        EXPECT_EQ(drop(b), -1);
        // The first line names the manager twice.
        const std::string undefined =
            "Manager(WorldManager)::onEvent(): Warning! Event type WorldManager is undefined.\n";
        const std::string not_valid =
            "Manager(WorldManager)::onEvent(): Error! Event type sv-step not valid.\n";
        EXPECT_EQ(said(), (level == 1 ? undefined + invalid + not_valid : invalid) + invalid +
                              "Manager(WorldManager)::registerInterest(): Event 'sv-step' not "
                              "valid for this Manager\n");
    }
}

TEST_F(Dispatch, second_starts_and_stops_are_warnings) {
    struct Switchboard : Manager {
        Switchboard() { setType("Switchboard"); }
        bool isValid(const std::string & /*event_type*/) const override { return true; }
    } manager;
    said();
    manager.registerInterest(&a, "t");
    manager.shutDown();
    EXPECT_EQ(manager.startUp(), 0);
    EXPECT_EQ(manager.startUp(), 0);
    manager.shutDown();
    EXPECT_EQ(said(), "Manager::shutDown(): Warning! Switchboard not started.\n"
                      "Manager::startUp(): Warning! Switchboard already started.\n");
    EXPECT_EQ(manager.unregisterInterest(&a, "t"), 0) << "interests outlive a stop";
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
    for (const int outside : {8, -1})
        EXPECT_EQ(list.at(outside), nullptr);
}

} // namespace
} // namespace sv
