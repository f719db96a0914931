/// Everything that happens to an object reaches it as an event. Its sender makes it on the stack,
/// every receiver's handler gets a pointer to it that must not be kept, and the sender destroys it
/// when the last handler has returned.
///
/// A handler tells events apart by their type string, compared exactly; eventCast() does that and
/// the cast in one.
#pragma once

#include <string>

namespace sv {

// Every type that the engine knows. The type decides which manager an object registers with; one
// that is not in this list belongs to the world manager.
inline constexpr char UNDEFINED_EVENT[] = "sv-undefined";
inline constexpr char STEP_EVENT[] = "sv-step";
inline constexpr char KEYBOARD_EVENT[] = "sv-keyboard";
inline constexpr char MOUSE_EVENT[] = "sv-mouse";
inline constexpr char COLLISION_EVENT[] = "sv-collision";
inline constexpr char OUT_EVENT[] = "sv-out";
inline constexpr char PATH_EVENT[] = "sv-path";
inline constexpr char NETWORK_EVENT[] = "sv-network";
inline constexpr char CUSTOM_NETWORK_EVENT[] = "sv-custom-network";
inline constexpr char KEYBOARD_NETWORK_EVENT[] = "sv-keyboard-network";
inline constexpr char MOUSE_NETWORK_EVENT[] = "sv-mouse-network";
inline constexpr char VIEW_EVENT[] = "sv-view";

/// Whether a type is in the list above. "sv-undefined" is, although nobody can be told of it.
bool isEngineEvent(const std::string &type);

class Event {
  public:
    /// An event of the type "sv-undefined", which no manager delivers.
    Event() = default;
    virtual ~Event() = default;

    void setType(const std::string &new_type);
    std::string getType() const;

  protected:
    explicit Event(const std::string &type);
    Event(const Event &) = default;
    Event &operator=(const Event &) = default;

  private:
    std::string event_type = UNDEFINED_EVENT;
};

/// The event as one of a given class, as in `eventCast<EventMouse>(p_event)`; null for an event of
/// another type or class, and for null. It lives as long as the event does.
template<typename SomeEvent>
const SomeEvent *eventCast(const Event *p_event) {
    if (!p_event || p_event->getType() != SomeEvent::TYPE)
        return nullptr;
    return dynamic_cast<const SomeEvent *>(p_event);
}

} // namespace sv
