#include "selvane/core/Manager.h"

#include "selvane/core/Event.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/NestingLimit.h"
#include "selvane/core/ObjectWatch.h"
#include "selvane/core/text.h"
#include "selvane/world/Object.h"
#include "selvane/world/WorldManager.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace sv {

namespace {

NestingLimit nested_events;

/// Never destroyed: objects may be destroyed after main().
std::vector<Manager *> &allManagers() {
    static auto &managers = *new std::vector<Manager *>;
    return managers;
}

/// What a delivery works with: the type of its event and copies of the lists of receivers, as they
/// were before any handler. Each level of nesting uses the same memory again.
class Delivery {
  public:
    explicit Delivery(const std::string &event_type) : own(levels().at(depth)) {
        own.event_type = event_type;
        ++depth;
    }
    ~Delivery() { --depth; }
    Delivery(const Delivery &) = delete;
    Delivery &operator=(const Delivery &) = delete;

    const std::string &getType() const { return own.event_type; }
    ObjectList &receivers() { return own.receivers; }

  private:
    struct Level {
        std::string event_type;
        ObjectList receivers;
    };

    /// Never destroyed, as the managers.
    static std::array<Level, NestingLimit::MOST> &levels() {
        static auto &instance = *new std::array<Level, NestingLimit::MOST>;
        return instance;
    }

    static inline std::size_t depth = 0;
    Level &own;
};

} // namespace

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
    if (event_type == UNDEFINED_EVENT) {
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
        return deliver(p_event);
    if (nested_events.isFirstRefusal())
        logFailure(
            "Manager(%s)::onEvent(): Error! %d events are under way, each sent from a handler "
            "of the one before. Does a handler send the event that it handles? Event '%s' "
            "ignored.",
            type.c_str(), NestingLimit::MOST, printable(event_type).c_str());
    return 0;
}

int Manager::deliver(const Event *p_event) {
    Delivery delivery(p_event->event_type);
    ObjectList &receivers = delivery.receivers();
    int called = 0;
    // By index: a handler may add and remove rows.
    for (std::size_t row = 0; row < interests.size(); ++row) {
        if (interests[row].event_name != delivery.getType())
            continue;
        receivers = interests[row].obj_list;
        const ObjectWatch watch(receivers);
        for (Object *p_o : receivers) {
            // An event of the step still reaches the objects after the one whose handler recursed.
            if (nested_events.isReachedWithin())
                return called;
            if (!p_o || !p_o->isActive())
                continue;
            p_o->eventHandler(p_event);
            ++called;
        }
    }
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
    if (found != interests.end())
        return found->obj_list.insert(p_o);

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
    if (found == interests.end() || found->obj_list.remove(p_o) != 0)
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
    for (Interest &interest : interests)
        while (interest.obj_list.remove(p_o) == 0) {
        }
    std::erase_if(interests, [](const Interest &interest) { return interest.obj_list.isEmpty(); });
}

std::vector<Manager::Interest>::iterator Manager::findInterest(const std::string &event_type) {
    return std::find_if(interests.begin(), interests.end(), [&](const Interest &interest) {
        return interest.event_name == event_type;
    });
}

} // namespace sv
