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

/// A connection of our own, beside SFML's.
struct DisplayConnection;

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
    std::unique_ptr<DisplayConnection> connection; // Null without a display.
};

/// Notices when a part of a window shows again that was covered: systems may not keep what was
/// drawn there.
class WindowWatch {
  public:
    /// `window`: the system's handle of it.
    explicit WindowWatch(std::uintptr_t window);
    ~WindowWatch();
    WindowWatch(const WindowWatch &) = delete;
    WindowWatch &operator=(const WindowWatch &) = delete;

    /// Whether that has happened since the last call. Always true if it cannot be known.
    bool isUncovered();

  private:
    std::unique_ptr<DisplayConnection> connection;
};

} // namespace sv::platform
