#include "selvane/core/Manager.h"

#include "selvane/core/Event.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/NestingLimit.h"
#include "selvane/core/ObjectWatch.h"
#include "selvane/core/text.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"

#include <algorithm>
#include <new>
#include <optional>
#include <utility>

namespace sv {

namespace {

NestingLimit nested_events;

/// Never destroyed: objects may be destroyed after main().
std::vector<Manager *> &allManagers() {
    static auto &managers = *new std::vector<Manager *>;
    return managers;
}

} // namespace

/// A delivery under way. It walks the list of a row as the list was when it began: who changes the
/// list leaves it to the delivery, and the row gets a copy.
class Manager::Delivery {
  public:
    explicit Delivery(Interest &row)
        : first(row.obj_list.begin()), last(row.obj_list.end()), watch(row.obj_list),
          outer(std::exchange(innermost, this)) {}
    ~Delivery() { innermost = outer; }
    Delivery(const Delivery &) = delete;
    Delivery &operator=(const Delivery &) = delete;

    auto begin() const { return first; }
    auto end() const { return last; }

    /// The row as it was, if it has changed.
    const std::optional<Interest> &rowBefore() const { return before; }

    /// To be called before the list of a row changes. Without memory the row loses its objects.
    static void keep(Interest &row);

  private:
    static inline Delivery *innermost = nullptr;

    ObjectList::Iterator first;
    ObjectList::Iterator last;
    std::optional<Interest> before;
    ObjectWatch watch;
    Delivery *outer;
};

void Manager::Delivery::keep(Interest &row) {
    Delivery *outermost = nullptr; // Of those that walk the list: it needs the list longest.
    for (Delivery *delivery = innermost; delivery; delivery = delivery->outer) {
        if (delivery->first != row.obj_list.begin())
            continue;
        delivery->before = row;
        outermost = delivery;
    }
    if (outermost)
        std::swap(outermost->before->obj_list, row.obj_list);
}

Manager::Manager() {
    allManagers().push_back(this);
}

Manager::~Manager() {
    std::erase(allManagers(), this);
}

bool Manager::isValid(const std::string & /*event_type*/) const {
    return false;
}

int Manager::startUp() {
    if (is_started)
        logLine(1, "Manager::startUp(): Warning! %s already started.", type.c_str());
    is_started = true;
    return 0;
}

void Manager::shutDown() {
    if (!is_started)
        logLine(1, "Manager::shutDown(): Warning! %s not started.", type.c_str());
    is_started = false;
}

int Manager::refuseSecondStart() const {
    return logFailure("%s::startup(): Warning! %s already started.", type.c_str(), type.c_str());
}

int Manager::refuseUnstarted() const {
    return logFailure("%s not started!", type.c_str());
}

int Manager::onEvent(const Event *p_event) {
    if (!p_event) {
        logFailure("Manager(%s)::onEvent(): Error! There is no event.", type.c_str());
        return 0;
    }
    const std::string &event_type = p_event->event_type;
    if (p_event->isOfType(UNDEFINED_EVENT)) {
        // Names the manager twice, as the line always has: people search logs for it.
        logLine(1, "Manager(%s)::onEvent(): Warning! Event type %s is undefined.", type.c_str(),
                type.c_str());
        return 0;
    }
    if (!isValid(event_type)) {
        logLine(1, "Manager(%s)::onEvent(): Error! Event type %s not valid.", type.c_str(),
                printable(event_type).c_str());
        return 0;
    }
    const NestingLimit::Call call(nested_events);
    if (!call.isRefused())
        return deliver(p_event, event_type, 0);
    if (nested_events.isFirstRefusal())
        logFailure(
            "Manager(%s)::onEvent(): Error! %d events are under way, each sent from a handler "
            "of the one before. Does a handler send the event that it handles? Event '%s' "
            "ignored.",
            type.c_str(), NestingLimit::MOST, printable(event_type).c_str());
    return 0;
}

int Manager::deliver(const Event *p_event, const std::string &event_type, std::size_t row) {
    while (row < interests.size() && interests[row].event_name != event_type)
        ++row;
    if (row == interests.size())
        return 0;
    const Delivery delivery(interests[row]);
    int called = 0;
    // Unrolled, and with one comparison for two questions that are seldom true: jumps are most of
    // what this loop costs beyond the handlers' calls.
#pragma GCC unroll 4
    for (Object *const p_o : delivery) {
        if (!p_o)
            continue;
        const bool is_inactive_or_limit_reached = p_o->isActive() <= nested_events.isReached();
        if (is_inactive_or_limit_reached) [[unlikely]] {
            // An event of the step still reaches the objects after the one whose handler recursed.
            if (nested_events.isReachedWithin())
                return called;
            if (!p_o->isActive())
                continue;
        }
        p_o->eventHandler(p_event);
        ++called;
    }
    // A handler may have removed the row and added another of this type behind it.
    if (delivery.rowBefore())
        called += deliver(p_event, delivery.rowBefore()->event_name, row + 1);
    return called;
}

int Manager::registerInterest(Object *p_o, const std::string &event_type) {
    if (!isValid(event_type))
        return logFailure("Manager(%s)::registerInterest(): Event '%s' not valid for this Manager",
                          type.c_str(), printable(event_type).c_str());
    if (p_o && !WorldManager::getInstance().isLiving(p_o))
        return logFailure("Manager(%s)::registerInterest(): Warning! %p is no living object. "
                          "Ignored.",
                          type.c_str(), static_cast<const void *>(p_o));
    if (!p_o || addInterest(p_o, event_type) != 0)
        return -1;
    ++p_o->registrations;
    return 0;
}

int Manager::addInterest(Object *p_o, const std::string &event_type) {
    const auto found = findInterest(event_type);
    if (found != interests.end()) {
        Delivery::keep(*found);
        return found->obj_list.insert(p_o);
    }

    if (interests.size() >= MAX_EVENTS)
        return -1;
    try {
        Interest interest{event_type, {}};
        if (interest.obj_list.insert(p_o) != 0)
            return -1;
        interests.push_back(std::move(interest));
    } catch (const std::bad_alloc &) {
        return logFailure("Manager(%s)::registerInterest(): Error! No memory for event '%s'.",
                          type.c_str(), printable(event_type).c_str());
    }
    return 0;
}

int Manager::unregisterInterest(Object *p_o, const std::string &event_type) {
    const auto found = findInterest(event_type);
    if (found == interests.end())
        return -1;
    Delivery::keep(*found);
    if (found->obj_list.remove(p_o) != 0)
        return -1;
    --p_o->registrations;
    if (found->obj_list.isEmpty())
        interests.erase(found);
    return 0;
}

void Manager::forgetEverywhere(const Object *p_o) {
    for (Manager *manager : allManagers())
        manager->forget(p_o);
}

void Manager::resetAll() {
    NestingLimit::beginSession();
    // By index: one manager may be the first to ask for another.
    for (std::size_t i = 0; i < allManagers().size(); ++i)
        allManagers()[i]->reset();
}

void Manager::forget(const Object *p_o) {
    for (Interest &interest : interests) {
        Delivery::keep(interest);
        while (interest.obj_list.remove(p_o) == 0) {
        }
    }
    std::erase_if(interests, [](const Interest &interest) { return interest.obj_list.isEmpty(); });
}

std::vector<Manager::Interest>::iterator Manager::findInterest(const std::string &event_type) {
    return std::find_if(interests.begin(), interests.end(), [&](const Interest &interest) {
        return interest.event_name == event_type;
    });
}

} // namespace sv
