/// The base of every manager: a name for the log, a started flag, and for each event type that it
/// delivers the objects that registered for it.
///
/// Each of the engine's managers is a single instance, built by the first getInstance() and never
/// destroyed, so that globals may use it before main() and after it. A manager borrows the objects
/// and forgets those that are destroyed. Game-loop thread only.
#pragma once

#include "selvane/core/ObjectList.h"

#include <cstddef>
#include <string>
#include <vector>

namespace sv {

class Event;
class Object;

/// The most event types that one manager delivers.
inline constexpr int MAX_EVENTS = 100;

class Manager {
  public:
    /// Whether this manager delivers events of that type. The base delivers none.
    virtual bool isValid(const std::string &event_type) const;

    virtual ~Manager();

    /// 0 on success. The base also returns 0 if it is started already, with a warning.
    virtual int startUp();

    /// Interests stay.
    virtual void shutDown();

    Manager(const Manager &) = delete;
    Manager &operator=(const Manager &) = delete;

    std::string getType() const { return type; }
    void setType(const std::string &new_type) { type = new_type; }
    bool isStarted() const { return is_started; }

    /// Calls the handler of every active object that is registered for the event's type, in the
    /// order of registration; returns how many were called. Objects that handlers register
    /// meanwhile get the next event; objects that are destroyed meanwhile are not called. (A type
    /// that loses its last object meanwhile and gets one again counts as new and may be delivered
    /// once more.)
    ///
    /// 0, with a line in the log, for null, and for events nested NestingLimit::MOST deep in
    /// handlers.
    int onEvent(const Event *p_event);

    /// Registers an object for events of that type; an object registered twice is called twice. 0,
    /// or -1 if the manager does not deliver that type, if the object is null or dead, or if
    /// MAX_EVENTS types are in use.
    int registerInterest(Object *p_o, const std::string &event_type);

    /// Removes one registration; 0, or -1 if there is none.
    int unregisterInterest(Object *p_o, const std::string &event_type);

    // Called by the engine.

    /// Removes a destroyed object from every manager, a game's own included.
    static void forgetEverywhere(const Object *p_o);

    /// Forgets what outlives a shut-down, so that the next start is like the process's first. A
    /// Session calls it at its end, for a game's own managers, too.
    virtual void reset() {}
    static void resetAll();

  protected:
    Manager();

    /// Log that this manager is started already, or is not started, and return -1.
    int refuseSecondStart() const;
    int refuseUnstarted() const;

  private:
    struct Interest {
        std::string event_name;
        ObjectList obj_list;
    };
    class Delivery;

    std::vector<Interest>::iterator findInterest(const std::string &event_type);
    int deliver(const Event *p_event, const std::string &event_type, std::size_t row);
    int addInterest(Object *p_o, const std::string &event_type);
    void forget(const Object *p_o);

    std::string type = "Manager";
    // In the order of first registration; none without objects.
    std::vector<Interest> interests;
    bool is_started = false;
};

} // namespace sv
