/// The base of everything that lives in a game. So far: whether it takes part, and what it does
/// with an event.
///
/// Game-loop thread only.
#pragma once

namespace sv {

class Event;

class Object {
  public:
    Object() = default;
    virtual ~Object() = default;
    Object(const Object &) = delete;
    Object &operator=(const Object &) = delete;

    /// Receives an event; 1 if it was handled, 0 if it was ignored. The event is gone when the
    /// handler has returned.
    virtual int eventHandler(const Event *p_event);

    /// An inactive object gets no events.
    bool isActive() const { return is_active; }
    int setActive(bool new_is_active);

  private:
    bool is_active = true;
};

} // namespace sv
