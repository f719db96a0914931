/// What every manager has: a name for the log, a started flag, and for each event type that it
/// delivers the objects that asked for it.
///
/// A manager of the engine is a single instance of its process, reached through its own
/// getInstance(), built on first use and never destroyed, so that globals may use it before main()
/// and after it. It borrows the objects, and forgets one that is destroyed. Game-loop thread only.
#pragma once

#include "selvane/core/ObjectList.h"

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

    /// 0 on success. The base also answers 0, with a warning, when it is started already.
    virtual int startUp();

    /// Interests stay: they live as long as the manager.
    virtual void shutDown();

    Manager(const Manager &) = delete;
    Manager &operator=(const Manager &) = delete;

    std::string getType() const { return type; }
    void setType(const std::string &new_type) { type = new_type; }
    bool isStarted() const { return is_started; }

    /// Gives the event to the handler of every active object that is interested in its type, in
    /// the order of registration, and returns how many were called. The receivers are those of the
    /// moment it begins: a handler may register and unregister whom it likes, and one that is
    /// destroyed meanwhile is not called. Only a type that loses its last object meanwhile and
    /// finds one again counts as new, and may be told once more.
    ///
    /// 0, with a line in the log, for null, and where handlers send events from within events
    /// NestingLimit::MOST deep.
    int onEvent(const Event *p_event);

    /// Adds an object to those that are told of events of that type; one that registers twice is
    /// told twice. 0, or -1 if the type is not this manager's, if the object is null or dead, or if
    /// MAX_EVENTS types are in use already.
    int registerInterest(Object *p_o, const std::string &event_type);

    /// Takes back one registration; 0, or -1 if there is none.
    int unregisterInterest(Object *p_o, const std::string &event_type);

    /// Called when an object is destroyed: no manager, a game's own included, keeps it.
    static void forgetEverywhere(const Object *p_o);

  protected:
    Manager();

    /// Logs that this manager is started already and returns -1.
    int refuseSecondStart() const;

  private:
    struct Interest {
        std::string event_name;
        ObjectList obj_list;
    };

    std::vector<Interest>::iterator findInterest(const std::string &event_type);
    int deliver(const Event *p_event, const std::string &event_type);
    int addInterest(Object *p_o, const std::string &event_type);
    void forget(const Object *p_o);

    std::string type = "Manager";
    // In the order of first registration, never one without objects.
    std::vector<Interest> interests;
    bool is_started = false;
};

} // namespace sv
