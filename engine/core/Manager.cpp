#include "core/Manager.h"

#include "core/Event.h"
#include "core/LogManager.h"
#include "world/Object.h"

#include <algorithm>
#include <utility>

namespace sv {

bool Manager::isValid(const std::string & /*event_type*/) const {
    return false;
}

int Manager::startUp() {
    if (is_started)
        LogManager::getInstance().writeLog(1, "Manager::startUp(): Warning! %s already started.",
                                           type.c_str());
    is_started = true;
    return 0;
}

void Manager::shutDown() {
    if (!is_started)
        LogManager::getInstance().writeLog(1, "Manager::shutDown(): Warning! %s not started.",
                                           type.c_str());
    is_started = false;
}

int Manager::refuseSecondStart() const {
    return logFailure("%s::startup(): Warning! %s already started.", type.c_str(), type.c_str());
}

int Manager::onEvent(const Event *p_event) {
    const std::string event_type = p_event->getType();
    LogManager &log = LogManager::getInstance();
    if (event_type == UNDEFINED_EVENT) {
        // Names the manager twice: readers of old logs search for this line as it is.
        log.writeLog(1, "Manager(%s)::onEvent(): Warning! Event type %s is undefined.",
                     type.c_str(), type.c_str());
        return 0;
    }
    if (!isValid(event_type)) {
        log.writeLog(1, "Manager(%s)::onEvent(): Error! Event type %s not valid.", type.c_str(),
                     event_type.c_str());
        return 0;
    }

    int called = 0;
    // By index: a handler may add and remove rows.
    for (std::size_t row = 0; row < interests.size(); ++row) {
        if (interests[row].event_name != event_type)
            continue;
        const ObjectList receivers = interests[row].obj_list;
        for (Object *p_o : receivers) {
            if (!p_o->isActive())
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
                          type.c_str(), event_type.c_str());

    const auto found = findInterest(event_type);
    if (found != interests.end())
        return found->obj_list.insert(p_o);

    if (interests.size() >= MAX_EVENTS)
        return -1;
    Interest interest{event_type, {}};
    if (interest.obj_list.insert(p_o) != 0)
        return -1;
    interests.push_back(std::move(interest));
    return 0;
}

int Manager::unregisterInterest(Object *p_o, const std::string &event_type) {
    const auto found = findInterest(event_type);
    if (found == interests.end() || found->obj_list.remove(p_o) != 0)
        return -1;
    if (found->obj_list.isEmpty())
        interests.erase(found);
    return 0;
}

std::vector<Manager::Interest>::iterator Manager::findInterest(const std::string &event_type) {
    return std::find_if(interests.begin(), interests.end(), [&](const Interest &interest) {
        return interest.event_name == event_type;
    });
}

} // namespace sv
