/// Whether the operating system can show a window, and what it says when it can't any more.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace sv::platform {

/// The exit status of a process that has lost its display.
inline constexpr int display_lost_status = 74;

/// Called in the middle of any call that draws or reads input.
struct DisplayWatch {
    /// The display has refused something; `resource` is the window or the like that it was about.
    void (*on_error)(const std::string &what, std::uintptr_t resource);

    /// The display has gone, or has thrown the program out. Must end the process, and use the
    /// display no more: if it does, the process ends at once.
    void (*on_loss)();
};

/// From now on an error of the display ends the process only as `watch` says.
void watchDisplay(const DisplayWatch &watch);

/// Pixels.
struct Room {
    int width = 0;
    int height = 0;
};

/// To be asked before SFML opens a window, since SFML ends the process if it can't. Keep it until
/// the window is open: an X server without clients may restart, and refuses connections while it
/// does.
class DisplayCheck {
  public:
    DisplayCheck();
    ~DisplayCheck();
    DisplayCheck(const DisplayCheck &) = delete;
    DisplayCheck &operator=(const DisplayCheck &) = delete;

    /// Why no window can be opened, as a sentence for the user; null if one can be opened.
    const char *obstacle() const;

    /// Whether the keyboard's layout has Latin letters; without them SFML knows none of its letter
    /// keys. REQUIRES: no obstacle.
    bool hasLatinLetters() const;

    /// How large a window may be to lie whole on the screen, with its frame and beside what is
    /// always there, such as a panel. REQUIRES: no obstacle.
    Room room() const;

  private:
    struct Connection;

    std::unique_ptr<Connection> connection; // Null without a display.
};

} // namespace sv::platform
