/// Everything that happens to an object reaches it as an event. The sender makes it on the stack;
/// handlers must not keep the pointer.
///
/// A handler distinguishes events by their type string; eventCast() compares it and casts.
#pragma once

#include <string>
#include <string_view>

namespace sv {

// The engine's types. The type decides which manager an object registers with; all other types are
// the world manager's.
inline constexpr char UNDEFINED_EVENT[] = "sv-undefined";
inline constexpr char STEP_EVENT[] = "sv-step";
inline constexpr char KEYBOARD_EVENT[] = "sv-keyboard";
inline constexpr char MOUSE_EVENT[] = "sv-mouse";
inline constexpr char TEXT_EVENT[] = "sv-text";
inline constexpr char COLLISION_EVENT[] = "sv-collision";
inline constexpr char OUT_EVENT[] = "sv-out";
inline constexpr char PATH_EVENT[] = "sv-path";
inline constexpr char NETWORK_EVENT[] = "sv-network";
inline constexpr char CUSTOM_NETWORK_EVENT[] = "sv-custom-network";
inline constexpr char KEYBOARD_NETWORK_EVENT[] = "sv-keyboard-network";
inline constexpr char MOUSE_NETWORK_EVENT[] = "sv-mouse-network";
inline constexpr char VIEW_EVENT[] = "sv-view";
inline constexpr char ANIMATION_END_EVENT[] = "sv-animation-end";

/// Whether a type is in the list above; "sv-undefined" is, although no manager delivers it.
bool isEngineEvent(const std::string &type);

class Event {
  public:
    /// An event of the type "sv-undefined", which no manager delivers.
    Event() = default;
    virtual ~Event() = default;

    void setType(const std::string &new_type);
    std::string getType() const;

    /// As comparing getType(), but without a copy.
    bool isOfType(std::string_view type) const { return event_type == type; }

  protected:
    explicit Event(const std::string &type);
    Event(const Event &) = default;
    Event &operator=(const Event &) = default;

  private:
    friend class Manager; // Compares the type without a copy.

    std::string event_type = UNDEFINED_EVENT;
};

/// The event as one of a class, as in `eventCast<EventMouse>(p_event)`; null for an event of
/// another type or class, and for null.
template<typename SomeEvent>
const SomeEvent *eventCast(const Event *p_event) {
    if (!p_event || !p_event->isOfType(SomeEvent::TYPE))
        return nullptr;
    return dynamic_cast<const SomeEvent *>(p_event);
}

} // namespace sv
